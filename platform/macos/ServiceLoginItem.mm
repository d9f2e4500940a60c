#import "platform/macos/ServiceLoginItem.h"

#import <ServiceManagement/ServiceManagement.h>

#import "platform/macos/Bridge.h"

namespace kelpa {

void ServiceLoginItem::setEnabled(bool enabled) {
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

} // namespace kelpa
