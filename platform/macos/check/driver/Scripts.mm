// What scripts ask the program for on other systems. There is no way for that on a Mac yet, so the driver
// asks the core.
#import "platform/macos/check/driver/Commands.h"

#include "app/TimedPause.h"

namespace {

id pauseFor(NSDictionary* asked) {
    const auto end = kelpa::TimedPause::endAfter([asked[@"duration"] UTF8String]);
    if (!end)
        return driver::problem(@"That is no time to pause for");
    kelpa::TimedPause::start(*end);
    return nil;
}
const driver::Registration pauseCommand("pause", pauseFor);

} // namespace
