#pragma once

#include "base/Date.h"

#include <optional>

namespace kelpa {

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
};

} // namespace kelpa
