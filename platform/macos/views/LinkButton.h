#pragma once

#import <AppKit/AppKit.h>

/// Underlined words in the colour of links that lead elsewhere.
@interface KelpaLinkButton : NSButton
/// `action` must not own the button.
- (instancetype)initWithFont:(NSFont*)font action:(void (^)(void))action;
- (void)setText:(NSString*)text;
/// Puts one of the system's symbols behind the words.
- (void)setSymbol:(NSString*)name;
@end
