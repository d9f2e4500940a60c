#import "platform/macos/MacClock.h"

#import <Foundation/Foundation.h>
#import <QuartzCore/QuartzCore.h>

namespace kelpa {

MacClock::MacClock(double speed) : SystemClock(speed, CACurrentMediaTime) {}

std::optional<CalendarDay> MacClock::ownDay(Date date) const {
    NSCalendar* calendar = [NSCalendar currentCalendar];
    if ([[calendar calendarIdentifier] isEqualToString:NSCalendarIdentifierGregorian])
        return std::nullopt;
    constexpr NSCalendarUnit units =
        NSCalendarUnitYear | NSCalendarUnitYearForWeekOfYear | NSCalendarUnitMonth | NSCalendarUnitDay;
    NSDate* moment = [NSDate dateWithTimeIntervalSince1970:date.secondsSince1970];
    NSDateComponents* day = [calendar components:units fromDate:moment];
    return CalendarDay{static_cast<int>([day year]), static_cast<int>([day yearForWeekOfYear]),
                       static_cast<int>([day month]), static_cast<int>([day day])};
}

std::optional<WeekRule> MacClock::weekRule() const {
    NSCalendar* calendar = [NSCalendar currentCalendar];
    // The calendar counts weekdays from 1, which is Sunday.
    return WeekRule{static_cast<int>([calendar firstWeekday]) - 1,
                    static_cast<int>([calendar minimumDaysInFirstWeek])};
}

} // namespace kelpa
