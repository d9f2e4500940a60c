#include "ui/ShownPreferences.h"

namespace kelpa {

namespace {

/// Keeps a value; false if it was there already.
template <class T>
bool changes(std::optional<T>& shown, const T& value) {
    if (shown == value)
        return false;
    shown = value;
    return true;
}

} // namespace

void ShownPreferences::setLayout(const PreferencesLayout& layout, PreferencesClient& client) {
    window_.setLayout(layout, client);
}

void ShownPreferences::setCopyright(const std::string& line) {
    if (changes(copyright_, line))
        window_.setCopyright(line);
}

void ShownPreferences::setSwitch(const std::string& id, bool on) {
    if (changes(shown_[id].on, on))
        window_.setSwitch(id, on);
}

void ShownPreferences::setText(const std::string& id, const std::string& text) {
    if (changes(shown_[id].text, text))
        window_.setText(id, text);
}

void ShownPreferences::setChoices(const std::string& id, const std::vector<PreferencesChoice>& choices) {
    if (changes(shown_[id].choices, choices))
        window_.setChoices(id, choices);
}

void ShownPreferences::setChosen(const std::string& id, std::int64_t value) {
    if (changes(shown_[id].chosen, value))
        window_.setChosen(id, value);
}

void ShownPreferences::setTimeOfDay(const std::string& id, int hour, int minute) {
    if (changes(shown_[id].time, {hour, minute}))
        window_.setTimeOfDay(id, hour, minute);
}

void ShownPreferences::setTimePoints(const std::string& id, const std::vector<TimePoint>& points) {
    if (changes(shown_[id].points, points))
        window_.setTimePoints(id, points);
}

void ShownPreferences::setPrompts(const std::string& id, const std::vector<std::string>& prompts) {
    if (changes(shown_[id].prompts, prompts))
        window_.setPrompts(id, prompts);
}

void ShownPreferences::setHint(const std::string& id, const std::string& hint) {
    if (changes(shown_[id].hint, hint))
        window_.setHint(id, hint);
}

void ShownPreferences::setProblem(const std::string& id, const std::string& problem) {
    if (changes(shown_[id].problem, problem))
        window_.setProblem(id, problem);
}

void ShownPreferences::setEnabled(const std::string& id, bool enabled) {
    if (changes(shown_[id].enabled, enabled))
        window_.setEnabled(id, enabled);
}

void ShownPreferences::setVisible(const std::string& id, bool visible) {
    if (changes(shown_[id].visible, visible))
        window_.setVisible(id, visible);
}

} // namespace kelpa
