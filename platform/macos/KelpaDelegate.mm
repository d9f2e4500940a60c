#import "platform/macos/KelpaDelegate.h"

#import "platform/macos/Bridge.h"
#import "platform/macos/Program.h"

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
    (void)notification;
    kelpa::callCore([&] { _program->launch(); });
}

- (void)applicationWillTerminate:(NSNotification*)notification {
    (void)notification;
    kelpa::callCore([&] { _program->willTerminate(); });
}

- (BOOL)applicationSupportsSecureRestorableState:(NSApplication*)application {
    (void)application;
    return _program->supportsSecureRestorableState();
}

/// Whoever starts a program that runs already wants to see something of it, and its place in the menu bar may
/// be hidden.
- (BOOL)applicationShouldHandleReopen:(NSApplication*)application hasVisibleWindows:(BOOL)visible {
    (void)application;
    (void)visible;
    kelpa::callCore([&] { _program->startedAgain(); });
    return NO;
}

- (void)showSettingsWindow:(id)sender {
    (void)sender;
    _program->presentPreferences();
}

- (void)showPreferencesWindow:(id)sender {
    (void)sender;
    _program->presentPreferences();
}

@end
