// What scripts ask the program for on other systems. There is no way for that on a Mac yet, so the driver
// asks the core.
#import "platform/macos/check/driver/Commands.h"

#include "app/TimedPause.h"

@implementation Driver (Scripts)

+ (id)pause:(NSDictionary*)asked {
    kelpa::TimedPause::start(kelpa::TimedPause::endAfter([asked[@"duration"] UTF8String]).value());
    return nil;
}

@end
