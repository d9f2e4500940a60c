#import "platform/macos/views/Labels.h"

#import "platform/macos/Bridge.h"

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
