#include "panes/Pane.h"

namespace kelpa {

void ShownPreferences::show(const std::string& id, PreferencesField field, const PreferencesValue& value) {
    const auto [place, isNew] = shown_.try_emplace({id, field}, value);
    if (!isNew && place->second == value)
        return;
    place->second = value;
    window_.show(id, field, value);
}

void ShownPreferences::did(const std::string& id, PreferencesAct act, const PreferencesValue& value) {
    if (act == PreferencesAct::Typed)
        shown_[{id, PreferencesField::Value}] = value;
    else if (act == PreferencesAct::Entered || act == PreferencesAct::Stepped)
        shown_.erase({id, PreferencesField::Value});
    else if (act != PreferencesAct::Pressed)
        shown_.erase({id, PreferencesField::Entries});
}

void ShownPreferences::showAgain() const {
    for (const auto& [place, value] : shown_)
        window_.show(place.first, place.second, value);
}

void Pane::show() {
    for (const auto& control : controls_)
        control->show();
}

void Pane::closed() {
    for (const auto& control : controls_)
        control->closed();
}

void Pane::addSection(std::string title) {
    layout_.sections.push_back({std::move(title), {}});
}

void Pane::add(const std::string& caption, std::unique_ptr<PaneControl> control) {
    layout_.sections.back().rows.push_back({caption, control->description()});
    controls_.push_back(std::move(control));
}

} // namespace kelpa
