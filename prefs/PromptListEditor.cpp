#include "prefs/PromptListEditor.h"

#include <algorithm>

namespace kelpa {

void PromptListEditor::select(PromptListKind kind) {
    kind_ = kind;
    reload();
}

void PromptListEditor::reload() {
    entries_ = kind_ == PromptListKind::Break ? style_.promptList() : style_.newDayPromptList();
}

void PromptListEditor::add(const std::string& text) {
    if (text.empty())
        return;
    entries_.insert(entries_.begin(), text);
    writeBack();
}

void PromptListEditor::edit(const std::string& old, const std::string& text) {
    if (text.empty())
        return;
    const auto found = std::find(entries_.begin(), entries_.end(), old);
    if (found == entries_.end()) {
        add(text);
        return;
    }
    *found = text;
    writeBack();
}

void PromptListEditor::remove(const std::string& text) {
    std::erase(entries_, text);
    writeBack();
}

void PromptListEditor::reset() {
    const BreakStyle style = style_.breakStyle();
    entries_ = kind_ == PromptListKind::Break ? prompts(style) : newDayPrompts(style);
    writeBack();
}

void PromptListEditor::writeBack() {
    if (kind_ == PromptListKind::Break)
        style_.setPromptList(entries_);
    else
        style_.setNewDayPromptList(entries_);
}

} // namespace kelpa
