#import <AppKit/AppKit.h>

#import "platform/macos/Bridge.h"
#import "platform/macos/KelpaDelegate.h"
#import "platform/macos/Program.h"

#include "platform/posix/SystemClock.h"

namespace {

/// `-speed N` on the command line lets N seconds pass in one, for demonstrations. Only there: a stored
/// setting of that name would be a trap.
double speed() {
    NSUserDefaults* defaults = [NSUserDefaults standardUserDefaults];
    NSDictionary* arguments = [defaults volatileDomainForName:NSArgumentDomain];
    const id asked = [arguments objectForKey:@"speed"];
    if (!asked)
        return 1;
    const auto speed = kelpa::speedOf(kelpa::toString([asked description]));
    if (!speed)
        NSLog(@"-speed needs a number above 0 and up to %d, not %@", kelpa::highestSpeed, asked);
    return speed.value_or(1);
}

} // namespace

int main() {
    @autoreleasepool {
        NSApplication* application = [NSApplication sharedApplication];
        // The core lives to the very end of the process, like the state that it shares: nothing may be taken
        // from under it while the application ends.
        auto* program = new kelpa::Program(speed());
        // The application does not own its delegate.
        static KelpaDelegate* delegate = nil;
        delegate = [[KelpaDelegate alloc] initWithProgram:*program];
        [application setDelegate:delegate];
        [application run];
    }
    return 0;
}
