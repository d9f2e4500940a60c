#import "platform/macos/MacClock.h"

#import <Foundation/Foundation.h>
#import <QuartzCore/QuartzCore.h>

#include "platform/posix/LocalTime.h"

namespace kelpa {

MacClock::MacClock(double speed) : speed_(speed), start_(CACurrentMediaTime()) {}

Date MacClock::now() const {
    // What the speed adds is counted on the clock of the timers, so that both run ahead together.
    const double ahead = speed_ == 1.0 ? 0 : (CACurrentMediaTime() - start_) * (speed_ - 1);
    return {[[NSDate date] timeIntervalSince1970] + ahead};
}

CivilTime MacClock::civil(Date date) const {
    return localCivilTime(date);
}

std::optional<Date> MacClock::date(const CivilTime& civil) const {
    return localDate(civil);
}

int MacClock::utcOffset(Date date) const {
    return localUtcOffset(date);
}

std::optional<WeekRule> MacClock::weekRule() const {
    NSCalendar* calendar = [NSCalendar currentCalendar];
    // The calendar counts weekdays from 1, which is Sunday.
    return WeekRule{static_cast<int>([calendar firstWeekday]) - 1,
                    static_cast<int>([calendar minimumDaysInFirstWeek])};
}

} // namespace kelpa
