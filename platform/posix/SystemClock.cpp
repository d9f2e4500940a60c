#include "platform/posix/SystemClock.h"

#include "base/Text.h"

#include <chrono>
#include <cmath>
#include <ctime>

namespace kelpa {

namespace {

double systemSeconds() {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    return static_cast<double>(now.tv_sec) + static_cast<double>(now.tv_nsec) * 1e-9;
}

std::int64_t wholeSeconds(Date date) {
    // Far beyond any year that a calendar can name; what is no number counts as 1970.
    constexpr double limit = 6e16;
    const double seconds = std::floor(date.secondsSince1970);
    if (!(seconds > -limit && seconds < limit))
        return 0;
    return static_cast<std::int64_t>(seconds);
}

std::tm localTm(std::int64_t seconds) {
    const auto time = static_cast<std::time_t>(seconds);
    std::tm result{};
    ::tzset();
    if (!::localtime_r(&time, &result))
        result = std::tm{};
    return result;
}

CivilTime civilOf(const std::tm& tm) {
    return {tm.tm_year + 1900, tm.tm_mon + 1, tm.tm_mday, tm.tm_hour, tm.tm_min, tm.tm_sec};
}

std::int64_t asIfUtc(const CivilTime& time) {
    const std::chrono::sys_days day = std::chrono::year{time.year} / time.month / time.day;
    return day.time_since_epoch().count() * std::int64_t{86400} + time.hour * 3600 + time.minute * 60 +
           time.second;
}

int offsetAt(std::int64_t seconds) {
    return static_cast<int>(localTm(seconds).tm_gmtoff);
}

/// The first instant in (from, to] at which the local clock shows another offset than at `from`.
std::int64_t nextTransition(std::int64_t from, std::int64_t to) {
    const int before = offsetAt(from);
    while (to - from > 1) {
        const std::int64_t middle = from + (to - from) / 2;
        (offsetAt(middle) == before ? from : to) = middle;
    }
    return to;
}

} // namespace

CivilTime LocalClock::civil(Date date) const {
    return civilOf(localTm(wholeSeconds(date)));
}

std::optional<Date> LocalClock::date(const CivilTime& time) const {
    if (!isDate(time))
        return std::nullopt;
    // Offsets never differ from UTC by more than a day and zones change at most once in two days, so that
    // what holds a day before and a day after are the only two candidates.
    constexpr std::int64_t day = 86400;
    const std::int64_t wanted = asIfUtc(time);
    const int earlier = offsetAt(wanted - day);
    const int later = offsetAt(wanted + day);
    for (const int offset : {earlier, later})
        if (civilOf(localTm(wanted - offset)) == time)
            return Date{static_cast<double>(wanted - offset)};
    return Date{static_cast<double>(nextTransition(wanted - day, wanted + day))};
}

int LocalClock::utcOffset(Date date) const {
    return offsetAt(wholeSeconds(date));
}

SystemClock::SystemClock(double speed, double (*timerSeconds)())
    : speed_(speed), timerSeconds_(timerSeconds), start_(timerSeconds()) {}

Date SystemClock::now() const {
    const double ahead = speed_ == 1.0 ? 0 : (timerSeconds_() - start_) * (speed_ - 1);
    return {systemSeconds() + ahead};
}

double SystemClock::systemTime(Date date) const {
    if (speed_ == 1.0)
        return date.secondsSince1970;
    return systemSeconds() + (date.secondsSince1970 - now().secondsSince1970) / speed_;
}

std::optional<double> speedOf(const std::string& text) {
    const auto speed = parseDecimal(text);
    // What is no number is neither above nor below another.
    return speed && *speed > 0 && *speed <= highestSpeed ? speed : std::nullopt;
}

} // namespace kelpa
