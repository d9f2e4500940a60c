#include "ui/PromptListControl.h"

namespace kelpa {

PromptListControl::PromptListControl(std::string id, std::string label, PreferencesWindow& window,
                                     PrefState& state)
    : PaneControl({std::move(id), PreferencesControlKind::Prompts, std::move(label), {}}, window),
      state_(state), told_(state.observeBreakStyle([this] { show(); })) {}

PromptListEditor PromptListControl::editor() const {
    PromptListEditor editor(state_.styleState());
    editor.select(kind_);
    return editor;
}

void PromptListControl::select(PromptListKind kind) {
    kind_ = kind;
    show();
}

void PromptListControl::show() {
    window().setPrompts(id(), editor().entries());
}

} // namespace kelpa
