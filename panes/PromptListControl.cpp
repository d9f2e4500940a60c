#include "panes/PromptListControl.h"

#include <algorithm>

namespace kelpa {

PromptListControl::PromptListControl(std::string id, std::string label, ShownPreferences& window,
                                     PrefState& state, Setting<std::int64_t>& list)
    : PaneControl({std::move(id), PreferencesControlKind::Prompts, std::move(label), {}}, window),
      state_(state), list_(list), styleTold_(state.observeBreakStyle([this] { show(); })),
      listTold_(list.observe([this](std::int64_t) { show(); })) {}

bool PromptListControl::editsNewDay() const {
    return list_() == static_cast<std::int64_t>(PromptListKind::NewDay);
}

std::vector<std::string> PromptListControl::entries() const {
    const PrefStyleState& style = state_.styleState();
    return editsNewDay() ? style.newDayPromptList() : style.promptList();
}

void PromptListControl::store(const std::vector<std::string>& entries) {
    if (editsNewDay())
        state_.styleState().setNewDayPromptList(entries);
    else
        state_.styleState().setPromptList(entries);
}

void PromptListControl::show() {
    std::vector<PreferencesEntry> shown;
    for (const std::string& text : entries())
        shown.push_back({0, text, {}});
    tell(PreferencesField::Entries, shown);
}

void PromptListControl::did(PreferencesAct act, const PreferencesValue& value) {
    const auto* text = std::get_if<std::string>(&value);
    const auto* change = std::get_if<PreferencesEdit>(&value);
    if (act == PreferencesAct::Reset)
        reset();
    else if (act == PreferencesAct::Edited && change != nullptr)
        edit(*change);
    else if (act == PreferencesAct::Added && text != nullptr)
        add(*text);
    else if (act == PreferencesAct::Removed && text != nullptr)
        remove(*text);
}

void PromptListControl::add(const std::string& text) {
    if (text.empty())
        return;
    auto all = entries();
    all.insert(all.begin(), text);
    store(all);
}

void PromptListControl::edit(const PreferencesEdit& edit) {
    if (edit.text.empty())
        return;
    auto all = entries();
    const auto found = std::find(all.begin(), all.end(), edit.old);
    if (found == all.end())
        return add(edit.text);
    *found = edit.text;
    store(all);
}

void PromptListControl::remove(const std::string& text) {
    auto all = entries();
    std::erase(all, text);
    store(all);
}

void PromptListControl::reset() {
    const BreakStyle style = state_.styleState().breakStyle();
    store(editsNewDay() ? newDayPrompts(style) : prompts(style));
}

} // namespace kelpa
