#include "app/TimedPause.h"

#include "app/AppState.h"
#include "base/FatalError.h"
#include "base/Text.h"
#include "timer/SystemEventController.h"
#include "ui/WindowController.h"

#include <array>
#include <cstdio>

namespace kelpa {

namespace {

constexpr std::int64_t secondsAMinute = 60;
constexpr std::int64_t minutesAnHour = 60;
constexpr std::int64_t hoursAWeek = 168;
constexpr std::int64_t minutesAWeek = hoursAWeek * minutesAnHour;

struct Pause {
    Clock& clock;
    StatusBar& statusBar;
    Subscription waiting = {}; ///< active until its time comes
    bool due = false;          ///< its time has come, and something stands in the way
};

Wired<Pause> pause("The timed pause was");

/// The day is told where it is not today's.
std::string endText(Date end) {
    const CivilTime time = pause->clock.civil(end);
    std::array<char, 32> text{};
    if (Calendar(pause->clock).isInToday(end))
        std::snprintf(text.data(), text.size(), "%02d:%02d", time.hour, time.minute);
    else
        std::snprintf(text.data(), text.size(), "%04d-%02d-%02d %02d:%02d", time.year, time.month, time.day,
                      time.hour, time.minute);
    return text.data();
}

void comeDue() {
    pause->waiting.cancel();
    pause->due = true;
    if (TimedPause::lift())
        AppState::setWorking(true);
}

/// A number of so many digits at most at the beginning of the text, with its unit behind it; takes both off.
std::optional<std::int64_t> takeNumber(std::string_view& text, char unit) {
    constexpr std::size_t mostDigits = 5;
    const auto end = text.find(unit);
    if (end == std::string_view::npos || end > mostDigits)
        return std::nullopt;
    const auto number = wholeNumber<std::uint32_t>(text.substr(0, end));
    if (!number)
        return std::nullopt;
    text.remove_prefix(end + 1);
    return *number;
}

/// The hour and minute of a text like "14:30".
std::optional<CivilTime> clockTime(std::string_view text) {
    const auto numbers = numbersIn(text, text.size() == 4 ? "0:00" : "00:00");
    if (numbers.empty())
        return std::nullopt;
    const CivilTime time{1970, 1, 1, numbers[0], numbers[1], 0};
    return isDate(time) ? std::optional(time) : std::nullopt;
}

} // namespace

void TimedPause::wire(Clock& clock, StatusBar& statusBar) {
    pause.wire({clock, statusBar});
}

void TimedPause::start(Date end) {
    if (!AppState::manualPause())
        AppState::setManualPause(true);
    pause->due = false;
    pause->waiting = pause->clock.at(end, comeDue);
    pause->statusBar.setHint(withArguments(localized("Paused until %1$s"), {endText(end)}));
}

void TimedPause::forget() {
    if (!pause->waiting.active() && !pause->due)
        return;
    pause->waiting.cancel();
    pause->due = false;
    pause->statusBar.setHint("");
}

bool TimedPause::lift() {
    const bool unlockStarts =
        SystemEventController::locked() && AppState::prefState().restartTimerAfterAwake();
    if (!pause->due || unlockStarts || WindowController::breakShows())
        return false;
    forget();
    AppState::liftManualPause();
    // Nobody may be there, and no movement of a mouse told of this start.
    SystemEventController::armIdleCheck();
    return true;
}

std::optional<Date> TimedPause::endAfter(std::string_view duration) {
    const auto hours = takeNumber(duration, 'h');
    const auto minutes = takeNumber(duration, 'm');
    const std::int64_t all = hours.value_or(0) * minutesAnHour + minutes.value_or(0);
    if (!duration.empty() || all < 1 || all > minutesAWeek)
        return std::nullopt;
    return Date{pause->clock.now().secondsSince1970 + static_cast<double>(all * secondsAMinute)};
}

std::optional<Date> TimedPause::endAt(std::string_view time) {
    const Calendar calendar(pause->clock);
    if (time == "tomorrow")
        return calendar.tomorrow(0, 0, 0);
    const auto shown = clockTime(time);
    if (!shown)
        return std::nullopt;
    const Date today = calendar.today(shown->hour, shown->minute, 0);
    return today > calendar.now() ? today : calendar.tomorrow(shown->hour, shown->minute, 0);
}

} // namespace kelpa
