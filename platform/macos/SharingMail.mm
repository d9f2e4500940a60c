#import "platform/macos/SharingMail.h"

#import <AppKit/AppKit.h>

#import "platform/macos/Bridge.h"

namespace kelpa {

void SharingMail::compose(const Mail& mail) {
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

} // namespace kelpa
