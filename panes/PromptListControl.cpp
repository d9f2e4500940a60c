#include "panes/PromptListControl.h"

#include <algorithm>

namespace kelpa {

PromptListControl::PromptListControl(std::string id, std::string label, PreferencesWindow& window,
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

void PromptListControl::promptAdded(const std::string& text) {
    if (text.empty())
        return;
    auto all = entries();
    all.insert(all.begin(), text);
    store(all);
}

void PromptListControl::promptEdited(const std::string& old, const std::string& text) {
    if (text.empty())
        return;
    auto all = entries();
    const auto found = std::find(all.begin(), all.end(), old);
    if (found == all.end())
        return promptAdded(text);
    *found = text;
    store(all);
}

void PromptListControl::promptDeleted(const std::string& text) {
    auto all = entries();
    std::erase(all, text);
    store(all);
}

void PromptListControl::promptsReset() {
    const BreakStyle style = state_.styleState().breakStyle();
    store(editsNewDay() ? newDayPrompts(style) : prompts(style));
}

} // namespace kelpa
