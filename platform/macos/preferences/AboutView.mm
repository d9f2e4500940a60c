#import "platform/macos/preferences/PaneViews.h"

#import "platform/macos/Bridge.h"
#import "platform/macos/views/Labels.h"
#import "platform/macos/views/Layout.h"

#include "platform/ports/Measures.h"

namespace {

constexpr CGFloat pictureSize = kelpa::measures::pictureSize;
constexpr CGFloat spacing = 8;

NSView* makePicture(const std::string& name) {
    NSImageView* view = [[NSImageView alloc] initWithFrame:NSZeroRect];
    [view setImage:[NSImage imageNamed:kelpa::toNSString(name)]];
    [view setImageScaling:NSImageScaleProportionallyUpOrDown];
    [view setAccessibilityElement:NO];
    kelpa::fixSize(view, {pictureSize, pictureSize});
    return view;
}

/// The glyph of the icon font that stands in for a missing picture.
NSView* makeGlyph(const kelpa::AboutContent& content) {
    NSFont* font = [NSFont fontWithName:kelpa::toNSString(content.glyphFont) size:pictureSize];
    NSTextField* glyph = kelpa::makeLabel(content.glyph, font);
    [glyph setAccessibilityElement:NO];
    NSStackView* padded = [NSStackView stackViewWithViews:@[ glyph ]];
    [padded setEdgeInsets:NSEdgeInsetsMake(0, 0, kelpa::measures::belowGlyph, 0)];
    return padded;
}

NSView* makeLink(const kelpa::AboutContent& content) {
    NSURL* address = [NSURL URLWithString:kelpa::toNSString(content.linkAddress)];
    KelpaLinkButton* link =
        [[KelpaLinkButton alloc] initWithFont:[NSFont systemFontOfSize:0]
                                       action:^{
                                         if (address)
                                             [[NSWorkspace sharedWorkspace] openURL:address];
                                       }];
    [link setText:kelpa::toNSString(content.link)];
    return link;
}

NSStackView* makeWords(const kelpa::AboutContent& content, NSTextField* copyright) {
    NSStackView* words = [NSStackView stackViewWithViews:@[
        kelpa::makeLabel(content.name, kelpa::boldFont(NSFontTextStyleLargeTitle)),
        kelpa::makeLabel(content.version), copyright, makeLink(content)
    ]];
    return kelpa::asColumn(words, NSLayoutAttributeLeading, spacing);
}

} // namespace

@implementation KelpaAboutView {
    NSTextField* _copyright;
}

- (instancetype)initWithContent:(const kelpa::AboutContent&)content {
    self = [super initWithFrame:NSZeroRect];
    if (!self)
        return nil;
    NSView* picture = content.icon.empty() ? makeGlyph(content) : makePicture(content.icon);
    _copyright = kelpa::makeLabel(content.copyright);
    NSStackView* row = [NSStackView stackViewWithViews:@[ picture, makeWords(content, _copyright) ]];
    [row setSpacing:kelpa::measures::padding];
    kelpa::addCentred(row, self);
    return self;
}

- (void)setCopyright:(const std::string&)line {
    [_copyright setStringValue:kelpa::toNSString(line)];
}

@end
