#include "platform/linux/Monotonic.h"

#include <algorithm>
#include <cmath>
#include <ctime>

namespace kelpa {

namespace {

constexpr double microseconds = 1e6;
/// Some three thousand years.
constexpr double longestWait = 1e11;

} // namespace

TimerQueue::Time monotonicMicroseconds() {
    timespec now{};
    clock_gettime(CLOCK_MONOTONIC, &now);
    return static_cast<TimerQueue::Time>(now.tv_sec) * 1'000'000U +
           static_cast<TimerQueue::Time>(now.tv_nsec) / 1000U;
}

double monotonicSeconds() {
    return static_cast<double>(monotonicMicroseconds()) / microseconds;
}

TimerQueue::Time microsecondsOf(double seconds) {
    if (!(seconds > 0))
        return 0;
    return static_cast<TimerQueue::Time>(std::llround(std::min(seconds, longestWait) * microseconds));
}

} // namespace kelpa
