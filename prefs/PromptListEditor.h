#pragma once

#include "prefs/PrefStyleState.h"

#include <string>
#include <vector>

namespace kelpa {

enum class PromptListKind { Break, NewDay };

/// Edits one prompt list of the current style on a working copy that is written back whole after each change.
class PromptListEditor {
  public:
    explicit PromptListEditor(PrefStyleState& style) : style_(style) { reload(); }

    /// Chooses the list to edit and reads it.
    void select(PromptListKind kind);
    /// Reads the list again, as after a change of the style.
    void reload();
    [[nodiscard]] PromptListKind kind() const { return kind_; }
    [[nodiscard]] const std::vector<std::string>& entries() const { return entries_; }

    /// Puts a text on top, also a second copy of one that is there. An empty text changes nothing.
    void add(const std::string& text);
    /// Replaces the first entry equal to `old` where it stands; without one `text` goes on top. An empty
    /// `text` changes nothing.
    void edit(const std::string& old, const std::string& text);
    /// Removes every entry equal to `text`.
    void remove(const std::string& text);
    /// Makes the list a stored copy of the style's built-in one.
    void reset();

  private:
    void writeBack();

    PrefStyleState& style_;
    PromptListKind kind_ = PromptListKind::Break;
    std::vector<std::string> entries_;
};

} // namespace kelpa
