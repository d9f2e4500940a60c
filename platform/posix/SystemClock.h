#pragma once

#include "base/Calendar.h"

#include <optional>
#include <string>

namespace kelpa {

/// A clock whose calendar is the C library's. A zone that is changed while the program runs is seen at the
/// next question.
class LocalClock : public Clock {
  public:
    [[nodiscard]] CivilTime civil(Date date) const final;
    /// Nothing for what is no date at all, such as 30 February.
    [[nodiscard]] std::optional<Date> date(const CivilTime& time) const final;
    [[nodiscard]] int utcOffset(Date date) const final;
    /// The C library knows no calendar but this one.
    [[nodiscard]] std::optional<CalendarDay> ownDay(Date) const override { return std::nullopt; }
};

/// The system's wall clock. What a week is, each system keeps in a place of its own.
class SystemClock : public LocalClock {
  public:
    [[nodiscard]] Date now() const final;

  protected:
    /// What the system's own wall clock shows when this one shows `date`, in seconds since 1970, should
    /// neither be set until then.
    [[nodiscard]] double systemTime(Date date) const;
    /// With a `speed` other than 1 the time runs ahead of the system's, which it left when the clock was
    /// made. `timerSeconds` is the clock that the program's timers count on, so that both run ahead together.
    SystemClock(double speed, double (*timerSeconds)());

  private:
    double speed_;
    double (*timerSeconds_)();
    double start_;
};

/// How many seconds may pass in one, for demonstrations and tests.
inline constexpr int highestSpeed = 1000;

/// A speed as it is written on a command line, above 0 and up to `highestSpeed`; nothing for anything else.
[[nodiscard]] std::optional<double> speedOf(const std::string& text);

} // namespace kelpa
