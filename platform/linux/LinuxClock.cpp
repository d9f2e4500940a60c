#include "platform/linux/LinuxClock.h"

#include <clocale>
#include <cstdint>
#include <ctime>
#include <langinfo.h>
#include <string_view>

namespace kelpa {

namespace {

constexpr int daysAWeek = 7;

/// The day that a locale counts its weekdays from is written as a date in digits, 19971130 being a Sunday.
int weekdayOfDigits(std::int32_t digits) {
    std::tm day{};
    day.tm_year = digits / 10000 - 1900;
    day.tm_mon = digits / 100 % 100 - 1;
    day.tm_mday = digits % 100;
    timegm(&day);
    return day.tm_wday;
}

/// A small number that the locale keeps as one byte.
int byteOf(nl_item item, locale_t locale) {
    return static_cast<unsigned char>(*nl_langinfo_l(item, locale));
}

std::optional<WeekRule> weekRuleOf(locale_t locale) {
    const std::string_view name = nl_langinfo_l(NL_LOCALE_NAME(LC_TIME), locale);
    // These are no culture's rules, only what programs do where none is chosen.
    if (name == "POSIX" || name == "C" || name.starts_with("C."))
        return std::nullopt;
    // A number of 32 bits in the place of a pointer, whose other half is not even cleared.
    const auto first = static_cast<std::int32_t>(
        reinterpret_cast<std::intptr_t>(nl_langinfo_l(_NL_TIME_WEEK_1STDAY, locale)));
    const int minimal = byteOf(_NL_TIME_WEEK_1STWEEK, locale);
    if (minimal < 1 || minimal > daysAWeek)
        return std::nullopt;
    const int weekday = weekdayOfDigits(first) + byteOf(_NL_TIME_FIRST_WEEKDAY, locale) - 1;
    return WeekRule{weekday % daysAWeek, minimal};
}

} // namespace

struct LinuxClock::Appointment {
    LinuxClock& clock;
    Date date;
    std::function<void()> work;
    Subscription waiting = {};

    void wait() {
        waiting = clock.loop_.atWallTime(clock.systemTime(date), [this] { come(); });
    }
    /// A clock that runs at another speed than the system's may not be there when that one is.
    void come() {
        if (clock.now() < date)
            return wait();
        // Which may well end the appointment.
        const auto due = std::move(work);
        due();
    }
};

LinuxClock::LinuxClock(EventLoop& loop, double speed) : SystemClock(speed, monotonicSeconds), loop_(loop) {}

Subscription LinuxClock::at(Date date, std::function<void()> work) {
    const auto appointment = std::make_shared<Appointment>(Appointment{*this, date, std::move(work)});
    appointment->wait();
    return Subscription([appointment] { appointment->waiting.cancel(); });
}

std::optional<WeekRule> LinuxClock::weekRule() const {
    const locale_t locale = newlocale(LC_TIME_MASK, "", nullptr);
    if (locale == nullptr)
        return std::nullopt;
    const auto rule = weekRuleOf(locale);
    freelocale(locale);
    return rule;
}

} // namespace kelpa
