#import "platform/macos/MacClock.h"

#import <Foundation/Foundation.h>
#import <QuartzCore/QuartzCore.h>

namespace kelpa {

MacClock::MacClock(double speed) : SystemClock(speed, CACurrentMediaTime) {}

std::optional<WeekRule> MacClock::weekRule() const {
    NSCalendar* calendar = [NSCalendar currentCalendar];
    // The calendar counts weekdays from 1, which is Sunday.
    return WeekRule{static_cast<int>([calendar firstWeekday]) - 1,
                    static_cast<int>([calendar minimumDaysInFirstWeek])};
}

} // namespace kelpa
