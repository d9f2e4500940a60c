#import "platform/macos/windows/MacWindowSystem.h"

#import "platform/macos/Bridge.h"
#import "platform/macos/RunningApplication.h"
#import "platform/macos/windows/MacWindow.h"

namespace kelpa {

namespace {

Screen screenOf(NSScreen* screen) {
    // Without a number (nobody has seen such a screen) it is 0.
    NSNumber* number = [[screen deviceDescription] objectForKey:@"NSScreenNumber"];
    const NSRect frame = [screen frame];
    return {[number unsignedIntValue],
            { frame.origin.x, frame.origin.y, frame.size.width, frame.size.height }};
}

/// While there is none, as on a laptop that wakes with its lid closed: of a common size, and with a number
/// that no display has.
Screen pretendedScreen() {
    return {UINT32_MAX, {0, 0, 1920, 1080}};
}

} // namespace

MacWindowSystem::~MacWindowSystem() {
    if (screenWatch_)
        [[NSNotificationCenter defaultCenter] removeObserver:screenWatch_];
}

void MacWindowSystem::setClient(WindowSystemClient& client) {
    client_ = &client;
    WindowSystemClient* told = &client;
    screenWatch_ = [[NSNotificationCenter defaultCenter]
        addObserverForName:NSApplicationDidChangeScreenParametersNotification
                    object:nil
                     queue:[NSOperationQueue mainQueue]
                usingBlock:^(NSNotification*) {
                  callCore([told] { told->screensChanged(); });
                  [KelpaWindow restorePlaces];
                }];
}

std::vector<Screen> MacWindowSystem::screens() const {
    std::vector<Screen> all;
    for (NSScreen* screen in [NSScreen screens])
        all.push_back(screenOf(screen));
    if (all.empty())
        all.push_back(pretendedScreen());
    return all;
}

const Screen* MacWindowSystem::mainScreen() const {
    NSScreen* screen = [NSScreen mainScreen];
    if (!screen)
        screen = [[NSScreen screens] firstObject];
    main_ = screen ? screenOf(screen) : pretendedScreen();
    return &main_;
}

std::unique_ptr<NativeWindow> MacWindowSystem::makeWindow(const WindowSpec& spec) {
    return std::make_unique<MacWindow>(spec, client_);
}

void MacWindowSystem::activate() {
    [runningApplication() activateIgnoringOtherApps:YES];
    // The keyboard goes to what was just shown, also when another window of ours had it.
    [[KelpaWindow takePresented] makeKeyWindow];
}

void MacWindowSystem::deactivate() {
    [runningApplication() deactivate];
}

} // namespace kelpa
