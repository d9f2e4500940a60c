#import "platform/macos/StandardAboutPanel.h"

#import <AppKit/AppKit.h>

#import "platform/macos/Bridge.h"

namespace kelpa {

namespace {

NSAttributedString* credits(const AboutText& text) {
    NSFont* font = [NSFont boldSystemFontOfSize:[NSFont smallSystemFontSize]];
    NSMutableDictionary* attributes = [NSMutableDictionary dictionaryWithObject:font
                                                                         forKey:NSFontAttributeName];
    // An address that is none leaves a text without a link.
    if (NSURL* address = [NSURL URLWithString:toNSString(text.creditsLink)])
        [attributes setObject:address forKey:NSLinkAttributeName];
    return [[NSAttributedString alloc] initWithString:toNSString(text.credits) attributes:attributes];
}

/// Only symbols take a configuration; a drawn picture stays as it is.
NSImage* icon(const AboutText& text) {
    NSImage* plain = [NSImage imageNamed:toNSString(text.icon)];
    NSImageSymbolConfiguration* medium =
        [NSImageSymbolConfiguration configurationWithScale:NSImageSymbolScaleMedium];
    NSImage* configured = [plain imageWithSymbolConfiguration:medium];
    return configured ? configured : plain;
}

} // namespace

void StandardAboutPanel::show(const AboutText& text) {
    NSMutableDictionary* options = [NSMutableDictionary dictionaryWithDictionary:@{
        NSAboutPanelOptionCredits : credits(text),
        NSAboutPanelOptionApplicationName : toNSString(text.name),
        @"Copyright" : toNSString(text.copyright),
    }];
    if (NSImage* image = icon(text))
        [options setObject:image forKey:NSAboutPanelOptionApplicationIcon];
    [NSApp orderFrontStandardAboutPanelWithOptions:options];
}

} // namespace kelpa
