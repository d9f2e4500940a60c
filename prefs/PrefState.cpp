#include "prefs/PrefState.h"

#include "base/FatalError.h"
#include "logging/SharedLogger.h"

#include <array>
#include <limits>

namespace kelpa {

namespace {

std::string listKey(const char* prefix, BreakStyle style) {
    return prefix + std::to_string(static_cast<std::int64_t>(style));
}

constexpr const char* promptKey = "break_prompt_list_";
constexpr const char* newDayPromptKey = "new_day_break_prompt_list_";

} // namespace

void reportUnusable(const StoredSetting<std::int64_t>& setting) {
    logger().error("stored " + std::string(setting.key()) + " is " + std::to_string(setting()) +
                       ", with which the cycle cannot go on",
                   {"PrefState", "reportUnusable"});
}

std::int64_t lengthOf(const StoredSetting<std::int64_t>& setting, std::int64_t secondsAUnit) {
    // A countdown that nobody ends, as that of a break on no screen, goes on below zero for as long.
    constexpr std::int64_t longestRun = 100LL * 366 * 86400;
    constexpr std::int64_t lowest = std::numeric_limits<std::int64_t>::min() + longestRun;
    const std::int64_t value = setting();
    if (!productFits(value, secondsAUnit) || value * secondsAUnit < lowest)
        reportUnusable(setting);
    return checkedMultiply(value, secondsAUnit);
}

std::vector<std::string> PrefStyleState::promptList() const {
    const BreakStyle style = breakStyle();
    const auto stored = store_.get<std::vector<std::string>>(listKey(promptKey, style));
    return stored ? *stored : prompts(style);
}

void PrefStyleState::setPromptList(const std::vector<std::string>& list) {
    store_.set(listKey(promptKey, breakStyle()), list);
}

std::vector<std::string> PrefStyleState::newDayPromptList() const {
    const BreakStyle style = breakStyle();
    const auto stored = store_.get<std::vector<std::string>>(listKey(newDayPromptKey, style));
    return stored ? *stored : newDayPrompts(style);
}

void PrefStyleState::setNewDayPromptList(const std::vector<std::string>& list) {
    store_.set(listKey(newDayPromptKey, breakStyle()), list);
}

void PrefState::workTimeWritten() {
    if (!app_.manualPause())
        app_.setWorking(true);
}

void PrefState::setStyleState(std::unique_ptr<PrefStyleState> state) {
    styleState_ = std::move(state);
    styleTold_ = styleState_->breakStyle.observe([this](BreakStyle) { styleChosen_.tell(); });
    styleStateChanged_.tell();
    styleChosen_.tell();
}

StoredSetting<bool>& PrefState::holdFor(BusyReason reason) {
    const std::array settings = {&holdForSound, &holdForCamera, &holdForFullScreen, &holdForAwake};
    return *settings.at(static_cast<std::size_t>(reason));
}

bool PrefState::isNewDay() const {
    return !calendar_.isInToday(Date{lastWeakupTimestamp()});
}

void PrefState::updateWeakupTimestamp() {
    lastWeakupTimestamp.set(calendar_.now().secondsSince1970);
}

} // namespace kelpa
