#import "platform/macos/views/LinkButton.h"

@implementation KelpaLinkButton {
    void (^_linkAction)(void);
}

- (instancetype)initWithFont:(NSFont*)font action:(void (^)(void))action {
    self = [super initWithFrame:NSZeroRect];
    if (self) {
        _linkAction = [action copy];
        [self setButtonType:NSButtonTypeMomentaryPushIn];
        [self setBordered:NO];
        [self setFont:font];
        [self setContentTintColor:[NSColor systemBlueColor]];
        [self setTarget:self];
        [self setAction:@selector(followed:)];
        [self setAccessibilityRole:NSAccessibilityLinkRole];
    }
    return self;
}

- (void)setText:(NSString*)text {
    [self setAttributedTitle:[[NSAttributedString alloc]
                                 initWithString:text
                                     attributes:@{
                                         NSFontAttributeName : [self font],
                                         NSForegroundColorAttributeName : [NSColor systemBlueColor],
                                         NSUnderlineStyleAttributeName : @(NSUnderlineStyleSingle),
                                     }]];
    [self setAccessibilityLabel:text];
}

- (void)setSymbol:(NSString*)name {
    [self setImage:[NSImage imageWithSystemSymbolName:name accessibilityDescription:nil]];
    [self setImagePosition:NSImageTrailing];
}

- (void)followed:(id)sender {
    // What it does may take the button, and with it the block, away.
    void (^const action)(void) = _linkAction;
    action();
}

@end
