#import "platform/macos/GlobalActivity.h"

#import <AppKit/AppKit.h>

#import "platform/macos/Bridge.h"

namespace kelpa {

namespace {

/// Neither other keys nor the scroll wheel nor other buttons.
constexpr NSEventMask watched = NSEventMaskLeftMouseDown | NSEventMaskLeftMouseUp |
                                NSEventMaskRightMouseDown | NSEventMaskRightMouseUp | NSEventMaskMouseMoved |
                                NSEventMaskLeftMouseDragged | NSEventMaskRightMouseDragged |
                                NSEventMaskFlagsChanged;

} // namespace

ActivityMonitor::Watch GlobalActivity::watch(std::function<void()> activity, std::function<void()> /*lost*/) {
    const DistributedLock* lock = &lock_;
    // The monitor watches to the end of the process, so that nobody keeps its handle.
    const id monitor = [NSEvent addGlobalMonitorForEventsMatchingMask:watched
                                                              handler:^(NSEvent*) {
                                                                if (!lock->locked())
                                                                    callCore(activity);
                                                              }];
    return monitor != nil ? Watch::Working : Watch::None;
}

} // namespace kelpa
