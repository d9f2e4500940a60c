#pragma once

#include "platform/linux/TimerQueue.h"

namespace kelpa {

/// Microseconds on the clock that stands still while the machine sleeps.
[[nodiscard]] TimerQueue::Time monotonicMicroseconds();
[[nodiscard]] double monotonicSeconds();
/// A delay in microseconds: zero for what is not above zero, "not a number" included, and cut down where sums
/// of times could overflow.
[[nodiscard]] TimerQueue::Time microsecondsOf(double seconds);

} // namespace kelpa
