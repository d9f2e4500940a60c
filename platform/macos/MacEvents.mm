#import "platform/macos/MacPorts.h"

#import <AppKit/AppKit.h>

#import "platform/macos/Bridge.h"

#include "platform/posix/ScreenLock.h"

namespace {

/// There from the first observer on. Nobody promises that the login window says a thing once only.
std::optional<kelpa::ScreenLock> screen;

void become(bool locked) {
    kelpa::callCore([locked] { screen->become(locked); });
}

} // namespace

/// The target of the notifications. There are no instances of it: the class itself observes.
@interface SystemEventActions : NSObject
+ (void)didLockScreenShow:(NSNotification*)notification;
+ (void)didLockScreenDismiss:(NSNotification*)notification;
@end

@implementation SystemEventActions

+ (void)didLockScreenShow:(NSNotification*)notification {
    become(true);
}

+ (void)didLockScreenDismiss:(NSNotification*)notification {
    become(false);
}

@end

namespace kelpa {

namespace {

/// At once, although this application is not the active one when the screen is locked: the system holds back
/// what is delivered in the usual way until it is.
void add(SEL selector, NSString* name) {
    [[NSDistributedNotificationCenter defaultCenter]
               addObserver:[SystemEventActions class]
                  selector:selector
                      name:name
                    object:nil
        suspensionBehavior:NSNotificationSuspensionBehaviorDeliverImmediately];
}

/// Neither other keys nor the scroll wheel nor other buttons.
constexpr NSEventMask watched = NSEventMaskLeftMouseDown | NSEventMaskLeftMouseUp |
                                NSEventMaskRightMouseDown | NSEventMaskRightMouseUp | NSEventMaskMouseMoved |
                                NSEventMaskLeftMouseDragged | NSEventMaskRightMouseDragged |
                                NSEventMaskFlagsChanged;

class DistributedLock final : public LockNotifications {
  public:
    void observe(std::function<void()> locked, std::function<void()> unlocked) override {
        screen.emplace(std::move(locked), std::move(unlocked));
        add(@selector(didLockScreenShow:), @"com.apple.screenIsLocked");
        add(@selector(didLockScreenDismiss:), @"com.apple.screenIsUnlocked");
    }
};

class GlobalActivity final : public ActivityMonitor {
  public:
    Watch watch(std::function<void()> activity, std::function<void()> /*lost*/) override {
        // The monitor watches to the end of the process, so that nobody keeps its handle.
        const id monitor = [NSEvent addGlobalMonitorForEventsMatchingMask:watched
                                                                  handler:^(NSEvent*) {
                                                                    if (!screen || !screen->locked())
                                                                        callCore(activity);
                                                                  }];
        return monitor != nil ? Watch::Working : Watch::None;
    }
};

} // namespace

std::unique_ptr<LockNotifications> makeDistributedLock() {
    return std::make_unique<DistributedLock>();
}

std::unique_ptr<ActivityMonitor> makeGlobalActivity() {
    return std::make_unique<GlobalActivity>();
}

} // namespace kelpa
