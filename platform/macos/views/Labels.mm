#import "platform/macos/views/Labels.h"

#import "platform/macos/Bridge.h"

@implementation KelpaActionButton {
    void (^_clicked)(void);
}

- (void)onClick:(void (^)(void))action {
    _clicked = [action copy];
    [self setTarget:self];
    [self setAction:@selector(clicked:)];
}

- (void)clicked:(id)sender {
    // What it does may take the button, and with it the block, away.
    void (^const clicked)(void) = _clicked;
    clicked();
}

@end

@implementation KelpaLinkButton

- (instancetype)initWithFont:(NSFont*)font action:(void (^)(void))action {
    self = [super initWithFrame:NSZeroRect];
    if (self) {
        [self onClick:action];
        [self setButtonType:NSButtonTypeMomentaryPushIn];
        [self setBordered:NO];
        [self setFont:font];
        [self setContentTintColor:[NSColor systemBlueColor]];
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

@end

namespace kelpa {

namespace {

NSTextField* styled(NSTextField* label, NSFont* font, NSColor* color) {
    [label setFont:font];
    [label setTextColor:color];
    return label;
}

} // namespace

NSTextField* makeLabel(const std::string& text, NSFont* font, NSColor* color) {
    return styled([NSTextField labelWithString:toNSString(text)], font, color);
}

NSTextField* makeCenteredText(const std::string& text, NSFont* font, NSColor* color) {
    NSTextField* label = styled([NSTextField wrappingLabelWithString:toNSString(text)], font, color);
    [label setAlignment:NSTextAlignmentCenter];
    [label setSelectable:NO];
    return label;
}

NSDictionary* centredText(NSFont* font, NSColor* color) {
    NSMutableParagraphStyle* centred = [[NSMutableParagraphStyle alloc] init];
    [centred setAlignment:NSTextAlignmentCenter];
    return @{
        NSFontAttributeName : font,
        NSForegroundColorAttributeName : color,
        NSParagraphStyleAttributeName : centred,
    };
}

NSFont* textFont(NSFontTextStyle style) {
    return [NSFont preferredFontForTextStyle:style options:@{}];
}

NSFont* boldFont(NSFontTextStyle style) {
    return [NSFont boldSystemFontOfSize:[textFont(style) pointSize]];
}

NSImage* symbolImage(const std::string& name, CGFloat points) {
    NSImageSymbolConfiguration* size =
        [NSImageSymbolConfiguration configurationWithPointSize:points weight:NSFontWeightRegular];
    return [[NSImage imageWithSystemSymbolName:toNSString(name)
                      accessibilityDescription:nil] imageWithSymbolConfiguration:size];
}

} // namespace kelpa
