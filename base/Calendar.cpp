#include "base/Calendar.h"

#include <chrono>
#include <cstdio>

namespace kelpa {

namespace {

using std::chrono::days;
using std::chrono::sys_days;

sys_days dayOf(int year, int month, int day) {
    return sys_days{std::chrono::year{year} / month / day};
}

/// The first day of week 1 of a year.
sys_days firstWeekStart(int year, WeekRule rule) {
    const sys_days newYear = dayOf(year, 1, 1);
    const int weekday = static_cast<int>(std::chrono::weekday{newYear}.c_encoding());
    const int daysIntoWeek = (weekday - rule.firstWeekday + 7) % 7;
    const bool weekIsNewYears = 7 - daysIntoWeek >= rule.minimalDaysInFirstWeek;
    return newYear - days{daysIntoWeek} + days{weekIsNewYears ? 0 : 7};
}

CivilTime at(CivilTime day, int hour, int minute, int second) {
    day.hour = hour;
    day.minute = minute;
    day.second = second;
    return day;
}

} // namespace

bool isDate(const CivilTime& time) {
    const auto within = [](int value, int first, int last) { return value >= first && value <= last; };
    // The library's dates keep no more of a number than its lowest bits.
    return within(time.year, static_cast<int>(std::chrono::year::min()),
                  static_cast<int>(std::chrono::year::max())) &&
           within(time.month, 1, 12) && within(time.day, 1, 31) &&
           (std::chrono::year{time.year} / time.month / time.day).ok() && within(time.hour, 0, 23) &&
           within(time.minute, 0, 59) && within(time.second, 0, 59);
}

int weekBasedYear(int year, int month, int day, WeekRule rule) {
    const sys_days date = dayOf(year, month, day);
    if (date >= firstWeekStart(year + 1, rule))
        return year + 1;
    return date < firstWeekStart(year, rule) ? year - 1 : year;
}

bool Calendar::isInToday(Date date) const {
    const CivilTime day = clock_.civil(date);
    const CivilTime today = clock_.civil(clock_.now());
    return day.year == today.year && day.month == today.month && day.day == today.day;
}

Date Calendar::today(int hour, int minute, int second) const {
    const Date now = clock_.now();
    return clock_.date(at(clock_.civil(now), hour, minute, second)).value_or(now);
}

/// Noon and a day is tomorrow, however long the days are where clocks are changed.
Date Calendar::tomorrow(int hour, int minute, int second) const {
    constexpr double day = 86400;
    const CivilTime tomorrow = clock_.civil({today(12, 0, 0).secondsSince1970 + day});
    return clock_.date(at(tomorrow, hour, minute, second)).value_or(clock_.now());
}

Date Calendar::todayDate(Date date) const {
    const CivilTime time = clock_.civil(date);
    const CivilTime today = clock_.civil(clock_.now());
    return clock_.date(at(today, time.hour, time.minute, time.second)).value_or(date);
}

CalendarDay Calendar::day(Date date) const {
    if (const auto own = clock_.ownDay(date))
        return *own;
    const CivilTime time = clock_.civil(date);
    const WeekRule rule = clock_.weekRule().value_or(WeekRule{});
    return {time.year, weekBasedYear(time.year, time.month, time.day, rule), time.month, time.day};
}

std::string Calendar::weekYearDay(Date date) const {
    const CalendarDay today = day(date);
    char text[32];
    std::snprintf(text, sizeof text, "%04d%02d%02d", today.weekYear, today.month, today.day);
    return text;
}

} // namespace kelpa
