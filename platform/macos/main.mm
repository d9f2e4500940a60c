#import <AppKit/AppKit.h>

#import "platform/macos/KelpaDelegate.h"
#import "platform/macos/Program.h"

namespace {

/// `-speed N` on the command line lets N seconds pass in one, for demonstrations. Only there: a stored
/// setting of that name would be a trap.
double speed() {
    NSUserDefaults* defaults = [NSUserDefaults standardUserDefaults];
    NSDictionary* arguments = [defaults volatileDomainForName:NSArgumentDomain];
    const double asked = [[arguments objectForKey:@"speed"] doubleValue];
    return asked > 0 ? asked : 1.0;
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
