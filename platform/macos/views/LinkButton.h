#pragma once

#import <AppKit/AppKit.h>

/// Underlined words in the colour of links that lead elsewhere; a symbol may stand behind them.
@interface KelpaLinkButton : NSButton
/// `symbol` is nil for none. `action` must not own the button.
- (instancetype)initWithFont:(NSFont*)font symbol:(NSString*)symbol action:(void (^)(void))action;
- (void)setText:(NSString*)text;
@end
