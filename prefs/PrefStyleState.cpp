#include "prefs/PrefStyleState.h"

namespace kelpa {

namespace {

std::string listKey(const char* prefix, BreakStyle style) {
    return prefix + std::to_string(static_cast<std::int64_t>(style));
}

constexpr const char* promptKey = "break_prompt_list_";
constexpr const char* newDayPromptKey = "new_day_break_prompt_list_";

} // namespace

PrefStyleState::PrefStyleState(DefaultsStore& store)
    : breakStyle(store, "break_style", BreakStyle::default_), store_(store) {}

std::vector<std::string> PrefStyleState::promptList() const {
    const BreakStyle style = breakStyle();
    const auto stored = store_.texts(listKey(promptKey, style));
    return stored ? *stored : prompts(style);
}

void PrefStyleState::setPromptList(const std::vector<std::string>& list) {
    store_.setTexts(listKey(promptKey, breakStyle()), list);
}

std::vector<std::string> PrefStyleState::newDayPromptList() const {
    const BreakStyle style = breakStyle();
    const auto stored = store_.texts(listKey(newDayPromptKey, style));
    return stored ? *stored : newDayPrompts(style);
}

void PrefStyleState::setNewDayPromptList(const std::vector<std::string>& list) {
    store_.setTexts(listKey(newDayPromptKey, breakStyle()), list);
}

} // namespace kelpa
