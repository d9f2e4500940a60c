#import "platform/macos/views/Capsule.h"

#import <QuartzCore/QuartzCore.h>

#import "platform/macos/views/Labels.h"
#import "platform/macos/views/Layout.h"

#include "platform/ports/Measures.h"

#include <cmath>

@implementation KelpaCapsule {
    NSColor* _color;
    CGFloat _shadowOpacity;
}

- (instancetype)initWithColor:(NSColor*)color {
    self = [super initWithFrame:NSZeroRect];
    if (self) {
        _color = color;
        [self setWantsLayer:YES];
    }
    return self;
}

- (void)castShadow:(CGFloat)opacity {
    _shadowOpacity = opacity;
    [self renewShadow];
}

/// A colour that is made of another one is light or dark for good, by the appearance in force at that moment.
- (void)renewShadow {
    [[self effectiveAppearance] performAsCurrentDrawingAppearance:^{
      NSShadow* shadow = [[NSShadow alloc] init];
      [shadow setShadowColor:[[NSColor secondaryLabelColor] colorWithAlphaComponent:self->_shadowOpacity]];
      [shadow setShadowBlurRadius:kelpa::measures::shadowRadius];
      [self setShadow:shadow];
    }];
}

- (BOOL)wantsUpdateLayer {
    return YES;
}

/// Called with the view's appearance in force, so that the colour is the right one of the two.
- (void)updateLayer {
    [[self layer] setBackgroundColor:[_color CGColor]];
}

- (void)viewDidChangeEffectiveAppearance {
    [super viewDidChangeEffectiveAppearance];
    [self setNeedsDisplay:YES];
    if (_shadowOpacity > 0)
        [self renewShadow];
}

/// Also where nobody lays out: capsules that move are placed by their frames.
- (void)setFrameSize:(NSSize)size {
    [super setFrameSize:size];
    [[self layer] setCornerRadius:size.height / 2];
}

@end

/// A button without a bezel that keeps some room around its words.
@interface KelpaPaddedButton : KelpaActionButton
@property(nonatomic) NSSize padding;
@end

@implementation KelpaPaddedButton

- (NSSize)intrinsicContentSize {
    const NSSize words = [[self attributedTitle] size];
    return NSMakeSize(std::ceil(words.width) + 2 * [self padding].width,
                      std::ceil(words.height) + 2 * [self padding].height);
}

@end

@implementation KelpaCapsuleButton {
    KelpaPaddedButton* _button;
    NSDictionary* _attributes;
}

- (instancetype)initWithColor:(NSColor*)color
                         font:(NSFont*)font
                    textColor:(NSColor*)textColor
                      padding:(NSSize)padding
                       action:(void (^)(void))action {
    self = [super initWithColor:color];
    if (self) {
        _attributes = kelpa::centredText(font, textColor);
        _button = [[KelpaPaddedButton alloc] initWithFrame:NSZeroRect];
        [_button setPadding:padding];
        [_button setButtonType:NSButtonTypeMomentaryPushIn];
        [_button setBordered:NO];
        [_button onClick:action];
        kelpa::add(@[ _button ], self);
        kelpa::surround(_button, self);
    }
    return self;
}

- (void)setText:(NSString*)text {
    [_button setAttributedTitle:[[NSAttributedString alloc] initWithString:text attributes:_attributes]];
    [_button setAccessibilityLabel:text];
    [_button invalidateIntrinsicContentSize];
}

- (void)setEnabled:(BOOL)enabled {
    [_button setEnabled:enabled];
}

@end
