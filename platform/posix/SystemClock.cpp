#include "platform/posix/SystemClock.h"

#include <ctime>

namespace kelpa {

namespace {

constexpr double nanosecond = 1e-9;

} // namespace

SystemClock::SystemClock(double speed, double (*timerSeconds)())
    : speed_(speed), timerSeconds_(timerSeconds), start_(timerSeconds()) {}

Date SystemClock::now() const {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    const double ahead = speed_ == 1.0 ? 0 : (timerSeconds_() - start_) * (speed_ - 1);
    return {static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * nanosecond + ahead};
}

} // namespace kelpa
