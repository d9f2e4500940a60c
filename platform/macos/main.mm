#import <AppKit/AppKit.h>

#import "platform/macos/Bridge.h"
#import "platform/macos/Program.h"

#include "platform/posix/SystemClock.h"

/// What the system tells the application as a whole.
@interface KelpaDelegate : NSObject <NSApplicationDelegate, KelpaSettingsActions>
/// `program` must outlive the delegate.
- (instancetype)initWithProgram:(kelpa::Program&)program;
@end

@implementation KelpaDelegate {
    kelpa::Program* _program;
}

- (instancetype)initWithProgram:(kelpa::Program&)program {
    self = [super init];
    if (self)
        _program = &program;
    return self;
}

- (void)applicationDidFinishLaunching:(NSNotification*)notification {
    kelpa::callCore([&] { _program->launch(); });
}

- (void)applicationWillTerminate:(NSNotification*)notification {
    kelpa::callCore([&] { _program->willTerminate(); });
}

- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)application {
    return _program->supportsSecureRestorableState();
}

/// Whoever starts a program that runs already wants to see something of it, and its place in the menu bar may
/// be hidden.
- (BOOL)applicationShouldHandleReopen:(NSApplication*)application hasVisibleWindows:(BOOL)visible {
    kelpa::callCore([&] { _program->startedAgain(); });
    return NO;
}

- (void)showSettingsWindow:(id)sender {
    _program->presentPreferences();
}

- (void)showPreferencesWindow:(id)sender {
    _program->presentPreferences();
}

@end

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
