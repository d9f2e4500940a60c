#pragma once

#import <AppKit/AppKit.h>

/// A filled capsule, drawn by its layer: as round as it is high. Its colours follow light and dark.
@interface KelpaCapsule : NSView
- (instancetype)initWithColor:(NSColor*)color;
/// A soft shadow of `opacity` around it.
- (void)castShadow:(CGFloat)opacity;
@end

/// Words on a capsule that can be clicked; `padding` is the room around the words.
@interface KelpaCapsuleButton : KelpaCapsule
/// `action` runs on a click for as long as the button lives; it must not own the button.
- (instancetype)initWithColor:(NSColor*)color
                         font:(NSFont*)font
                    textColor:(NSColor*)textColor
                      padding:(NSSize)padding
                       action:(void (^)(void))action;
- (void)setText:(NSString*)text;
- (void)setEnabled:(BOOL)enabled;
@end
