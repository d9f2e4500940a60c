#import "platform/macos/MacPorts.h"

#import <AppKit/AppKit.h>
#import <ServiceManagement/ServiceManagement.h>

#import "platform/macos/Bridge.h"

namespace kelpa {

namespace {

class ServiceLoginItem final : public LoginItem {
  public:
    explicit ServiceLoginItem(std::string helperIdentifier)
        : helperIdentifier_(std::move(helperIdentifier)) {}

    void setEnabled(bool enabled) override {
        if (@available(macOS 13.0, *)) {
            SMAppService* service = [SMAppService mainAppService];
            NSError* error = nil;
            const BOOL done =
                enabled ? [service registerAndReturnError:&error] : [service unregisterAndReturnError:&error];
            // The line has always stood in the system log like this, without the error behind it.
            if (!done)
                NSLog(@"SMAppService error: ");
        } else {
            SMLoginItemSetEnabled((__bridge CFStringRef)toNSString(helperIdentifier_), enabled);
        }
    }

  private:
    std::string helperIdentifier_;
};

class SharingMail final : public MailComposer {
  public:
    void compose(const Mail& mail) override {
        NSSharingService* service = [NSSharingService sharingServiceNamed:NSSharingServiceNameComposeEmail];
        if (!service)
            return;
        [service setSubject:toNSString(mail.subject)];
        [service setRecipients:@[ toNSString(mail.recipient) ]];
        NSMutableArray* items = [NSMutableArray arrayWithObject:toNSString(mail.body)];
        if (!mail.attachment.empty())
            [items addObject:[NSURL fileURLWithPath:toNSString(mail.attachment)]];
        [service performWithItems:items];
    }
};

NSAttributedString* credits(const AboutContent& text) {
    NSFont* font = [NSFont boldSystemFontOfSize:[NSFont smallSystemFontSize]];
    NSMutableDictionary* attributes = [NSMutableDictionary dictionaryWithObject:font
                                                                         forKey:NSFontAttributeName];
    // An address that is none leaves a text without a link.
    if (NSURL* address = [NSURL URLWithString:toNSString(text.linkAddress)])
        [attributes setObject:address forKey:NSLinkAttributeName];
    return [[NSAttributedString alloc] initWithString:toNSString(text.link) attributes:attributes];
}

/// Only symbols take a configuration; a drawn picture stays as it is.
NSImage* icon(const AboutContent& text) {
    NSImage* plain = [NSImage imageNamed:toNSString(text.icon)];
    NSImageSymbolConfiguration* medium =
        [NSImageSymbolConfiguration configurationWithScale:NSImageSymbolScaleMedium];
    NSImage* configured = [plain imageWithSymbolConfiguration:medium];
    return configured ? configured : plain;
}

class StandardAboutPanel final : public AboutPanel {
  public:
    void show(const AboutContent& text) override {
        NSMutableDictionary* options = [NSMutableDictionary dictionaryWithDictionary:@{
            NSAboutPanelOptionCredits : credits(text),
            NSAboutPanelOptionApplicationName : toNSString(text.name),
            @"Copyright" : toNSString(text.copyright),
        }];
        if (NSImage* image = icon(text))
            [options setObject:image forKey:NSAboutPanelOptionApplicationIcon];
        [NSApp orderFrontStandardAboutPanelWithOptions:options];
    }
};

} // namespace

std::unique_ptr<LoginItem> makeMacLoginItem(std::string helperIdentifier) {
    return std::make_unique<ServiceLoginItem>(std::move(helperIdentifier));
}

std::unique_ptr<MailComposer> makeMacMail() {
    return std::make_unique<SharingMail>();
}

std::unique_ptr<AboutPanel> makeMacAboutPanel() {
    return std::make_unique<StandardAboutPanel>();
}

} // namespace kelpa
