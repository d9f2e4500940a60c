#include "prefs/PromptState.h"

#include "base/Checked.h"

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

PromptState::PromptState(PromptClient& client, RandomSource& random)
    : prompt(client.prefState().breakPrompt()), client_(client), random_(random) {}

void PromptState::showBreak() {
    shortBreakTimes_ = remainder(checkedAdd(shortBreakTimes_, 1), cycleLength());
    client_.cancelMouseIdleCheck();
    lastKind_ = shortBreakTimes_ == 0 ? BreakKind::Long : BreakKind::Short;
    client_.showBreakWindows();
    const std::int64_t seconds = nextLength();
    prompt.set(nextPrompt());
    client_.startBreak(seconds);
}

std::int64_t PromptState::cycleLength() const {
    const auto& setting = client_.prefState().shortBreakTimes;
    const std::int64_t breaks = setting();
    if (breaks == 0)
        reportUnusable(setting);
    return breaks;
}

std::int64_t PromptState::nextLength() {
    PrefState& pref = client_.prefState();
    if (lastKind_ == BreakKind::Short) {
        showSkipButton.set(true);
        return lengthOf(pref.breakTime, 1);
    }
    showSkipButton.set(!pref.forceLongBreak());
    return lengthOf(pref.longBreakTime, secondsAMinute);
}

std::string PromptState::nextPrompt() {
    PrefState& pref = client_.prefState();
    if (pref.customBreakPrompt())
        return pref.breakPrompt();
    return anyOf(prompts(pref.styleState().breakStyle()), pref.breakPrompt());
}

void PromptState::showNewDay() {
    prompt.set(anyOf(newDayPrompts(client_.prefState().styleState().breakStyle()), newDayFallback()));
    showSkipButton.set(true);
    lastKind_ = BreakKind::NewDay;
    client_.showBreakWindows();
    client_.startBreak(newDaySeconds);
}

void PromptState::closePrompt() {
    client_.closeBreakWindows();
    if (!client_.manualPause())
        client_.setWorking(true);
}

std::string PromptState::anyOf(const std::vector<std::string>& texts, const std::string& otherwise) {
    return texts.empty() ? otherwise : texts[random_.below(texts.size())];
}

} // namespace kelpa
