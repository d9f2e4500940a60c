#include "platform/posix/LocalClock.h"

#include "platform/posix/LocalTime.h"

#include <ctime>

namespace kelpa {

namespace {

constexpr double nanosecond = 1e-9;

} // namespace

LocalClock::LocalClock(double speed, double (*timerSeconds)())
    : speed_(speed), timerSeconds_(timerSeconds), start_(timerSeconds()) {}

Date LocalClock::now() const {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    const double ahead = speed_ == 1.0 ? 0 : (timerSeconds_() - start_) * (speed_ - 1);
    return {static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * nanosecond + ahead};
}

CivilTime LocalClock::civil(Date date) const {
    return localCivilTime(date);
}

std::optional<Date> LocalClock::date(const CivilTime& civil) const {
    return localDate(civil);
}

int LocalClock::utcOffset(Date date) const {
    return localUtcOffset(date);
}

} // namespace kelpa
