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

void GlobalActivity::observe(std::function<void()> activity) {
    // The monitor watches to the end of the process, so that nobody keeps its handle.
    (void)[NSEvent addGlobalMonitorForEventsMatchingMask:watched
                                                 handler:^(NSEvent*) {
                                                   callCore(activity);
                                                 }];
}

} // namespace kelpa
