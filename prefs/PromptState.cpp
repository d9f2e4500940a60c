#include "prefs/PromptState.h"

#include "base/FatalError.h"

namespace kelpa {

namespace {

constexpr std::int64_t newDaySeconds = 10;
constexpr std::int64_t secondsAMinute = 60;

std::int64_t remainder(std::int64_t value, std::int64_t divisor) {
    if (divisor == 0)
        fatalError("Division by zero in remainder operation");
    // By -1 the division itself could overflow, and nothing remains anyway.
    return divisor == -1 ? 0 : value % divisor;
}

} // namespace

PromptState::PromptState(App& app, RandomBelow random)
    : prompt(app.prefState().breakPrompt()), app_(app), random_(std::move(random)) {}

void PromptState::showBreak() {
    shortBreakTimes_ = remainder(checkedAdd(shortBreakTimes_, 1), cycleLength());
    if (const auto& check = app_.mouseMoveEventItem())
        check->cancel();
    lastKind_ = shortBreakTimes_ == 0 ? BreakKind::Long : BreakKind::Short;
    app_.showBreakWindows();
    const std::int64_t seconds = nextLength();
    prompt.set(nextPrompt());
    app_.startBreak(seconds);
}

BreakKind PromptState::nextKind() const {
    const std::int64_t breaks = app_.prefState().shortBreakTimes();
    const bool isLong = breaks != 0 && remainder(checkedAdd(shortBreakTimes_, 1), breaks) == 0;
    return isLong ? BreakKind::Long : BreakKind::Short;
}

std::int64_t PromptState::cycleLength() const {
    const auto& setting = app_.prefState().shortBreakTimes;
    const std::int64_t breaks = setting();
    if (breaks == 0)
        reportUnusable(setting);
    return breaks;
}

std::int64_t PromptState::nextLength() {
    PrefState& pref = app_.prefState();
    if (lastKind_ == BreakKind::Short) {
        showSkipButton.set(true);
        return lengthOf(pref.breakTime, 1);
    }
    showSkipButton.set(!pref.forceLongBreak());
    return lengthOf(pref.longBreakTime, secondsAMinute);
}

std::string PromptState::nextPrompt() {
    PrefState& pref = app_.prefState();
    if (pref.customBreakPrompt())
        return pref.breakPrompt();
    return anyOf(prompts(pref.styleState().breakStyle()), pref.breakPrompt());
}

void PromptState::showNewDay() {
    prompt.set(anyOf(newDayPrompts(app_.prefState().styleState().breakStyle()), newDayFallback()));
    showSkipButton.set(true);
    lastKind_ = BreakKind::NewDay;
    app_.showBreakWindows();
    app_.startBreak(newDaySeconds);
}

void PromptState::closePrompt() {
    app_.closeBreakWindows();
    app_.liftTimedPause();
    if (!app_.manualPause())
        app_.setWorking(true);
}

std::string PromptState::anyOf(const std::vector<std::string>& texts, const std::string& otherwise) {
    return texts.empty() ? otherwise : texts[random_(texts.size())];
}

} // namespace kelpa
