#pragma once

#include "base/Published.h"

#include <compare>
#include <functional>
#include <optional>
#include <string>

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

/// Whether there is such a day, and a clock shows such a time on it.
[[nodiscard]] bool isDate(const CivilTime& time);

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

/// The wall clock and the local time zone's calendar.
class Clock {
  public:
    virtual ~Clock() = default;
    [[nodiscard]] virtual Date now() const = 0;
    /// What the local calendar shows for an instant; the sub-second part is dropped downwards.
    [[nodiscard]] virtual CivilTime civil(Date date) const = 0;
    /// The instant of a local time. A time that exists twice gives the first; one that the clock skips gives
    /// the first instant after the gap; nothing where the calendar cannot tell.
    [[nodiscard]] virtual std::optional<Date> date(const CivilTime& civil) const = 0;
    /// Offset of local time from UTC at an instant, in seconds, east positive.
    [[nodiscard]] virtual int utcOffset(Date date) const = 0;
    /// The day as the user's own calendar counts it, such as the Buddhist or the Persian one; nothing where
    /// that is the calendar of `civil`.
    [[nodiscard]] virtual std::optional<CalendarDay> ownDay(Date date) const = 0;
    /// The user's week rule where the platform knows it, else nothing.
    [[nodiscard]] virtual std::optional<WeekRule> weekRule() const = 0;
    /// Runs `work` once from the main loop, and never inside the call, when the wall clock shows `date` or
    /// later: also when it was set there, or the machine slept until then. A clock that is set back makes the
    /// wait longer. The handle ends it.
    [[nodiscard]] virtual Subscription at(Date date, std::function<void()> work) = 0;
};

/// Questions to the user's current calendar. It keeps nothing: each answer is of the moment it is asked.
class Calendar {
  public:
    explicit Calendar(const Clock& clock) : clock_(clock) {}

    [[nodiscard]] Date now() const { return clock_.now(); }
    [[nodiscard]] CivilTime civil(Date date) const { return clock_.civil(date); }
    [[nodiscard]] bool isInToday(Date date) const;
    /// Today at a clock time; the current instant where the calendar cannot build it.
    [[nodiscard]] Date today(int hour, int minute, int second) const;
    /// The day after today at a clock time; the current instant where the calendar cannot build it.
    [[nodiscard]] Date tomorrow(int hour, int minute, int second) const;
    /// The same hour, minute and second on today's date; the date itself where the calendar cannot build it.
    [[nodiscard]] Date todayDate(Date date) const;
    /// The day in the calendar that the user lives by.
    [[nodiscard]] CalendarDay day(Date date) const;
    /// "YYYYMMdd" with the week-based year: around New Year the year is that of the week.
    [[nodiscard]] std::string weekYearDay(Date date) const;

  private:
    const Clock& clock_;
};

/// The year that the week of a day belongs to. Month and day count from 1.
[[nodiscard]] int weekBasedYear(int year, int month, int day, WeekRule rule);

} // namespace kelpa
