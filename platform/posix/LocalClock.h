#pragma once

#include "platform/ports/Clock.h"

namespace kelpa {

/// The system's wall clock and time zone, as the C library tells them. A zone that is changed while the
/// program runs is seen at the next question. What a week is, each system keeps in a place of its own.
class LocalClock : public Clock {
  public:
    [[nodiscard]] Date now() const final;
    [[nodiscard]] CivilTime civil(Date date) const final;
    [[nodiscard]] std::optional<Date> date(const CivilTime& civil) const final;
    [[nodiscard]] int utcOffset(Date date) const final;

  protected:
    /// With a `speed` other than 1 the time runs ahead of the system's, which it left when the clock was
    /// made. `timerSeconds` is the clock that the program's timers count on, so that both run ahead together.
    LocalClock(double speed, double (*timerSeconds)());

  private:
    double speed_;
    double (*timerSeconds_)();
    double start_;
};

} // namespace kelpa
