#pragma once

#include "platform/posix/LocalClock.h"

namespace kelpa {

/// The system's wall clock. What a week is, each system keeps in a place of its own.
class SystemClock : public LocalClock {
  public:
    [[nodiscard]] Date now() const final;

  protected:
    /// With a `speed` other than 1 the time runs ahead of the system's, which it left when the clock was
    /// made. `timerSeconds` is the clock that the program's timers count on, so that both run ahead together.
    SystemClock(double speed, double (*timerSeconds)());

  private:
    double speed_;
    double (*timerSeconds_)();
    double start_;
};

} // namespace kelpa
