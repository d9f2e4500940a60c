#pragma once

#include "base/Date.h"
#include "platform/ports/Clock.h"

#include <string>

namespace kelpa {

/// Questions to the user's current calendar. It keeps nothing: each answer is of the moment it is asked.
class Calendar {
  public:
    explicit Calendar(const Clock& clock) : clock_(clock) {}

    [[nodiscard]] Date now() const { return clock_.now(); }
    [[nodiscard]] CivilTime civil(Date date) const { return clock_.civil(date); }
    [[nodiscard]] bool isInToday(Date date) const;
    /// Today at a clock time; the current instant where the calendar cannot build it.
    [[nodiscard]] Date today(int hour, int minute, int second) const;
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
