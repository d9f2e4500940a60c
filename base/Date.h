#pragma once

#include <compare>

namespace kelpa {

/// An instant: seconds since 1970-01-01 00:00:00 UTC, with a sub-second part.
struct Date {
    double secondsSince1970 = 0;
    auto
    operator<=>(const Date&) const = default; // NOLINT(modernize-use-nullptr): the tool minds what this makes
};

/// What a wall calendar and clock show for an instant in one time zone. Months and days count from 1.
struct CivilTime {
    int year = 1970;
    int month = 1;
    int day = 1;
    int hour = 0;
    int minute = 0;
    int second = 0;
    bool operator==(const CivilTime&) const = default;
};

/// A day as some calendar counts it. The year of the week differs from the other around New Year.
struct CalendarDay {
    int year = 1970;
    int weekYear = 1970;
    int month = 1;
    int day = 1;
    bool operator==(const CalendarDay&) const = default;
};

/// How a culture counts the weeks of a year; ISO 8601's rule unless told otherwise.
struct WeekRule {
    int firstWeekday = 1;           ///< 0 Sunday … 6 Saturday
    int minimalDaysInFirstWeek = 4; ///< how many of its days week 1 must have in the new year
    bool operator==(const WeekRule&) const = default;
};

} // namespace kelpa
