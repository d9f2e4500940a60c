#pragma once

#include "prefs/BreakStyle.h"
#include "prefs/Setting.h"

#include <string>
#include <vector>

namespace kelpa {

/// The chosen break style and the user's own copies of the prompt lists, one pair a style. A list whose key
/// holds no array of texts is the style's built-in one; an empty array is a list without entries.
class PrefStyleState {
  public:
    explicit PrefStyleState(DefaultsStore& store);

    Setting<BreakStyle> breakStyle;

    /// The lists of the current style. Setting them announces nothing: the pane keeps its own copy.
    [[nodiscard]] std::vector<std::string> promptList() const;
    void setPromptList(const std::vector<std::string>& list);
    [[nodiscard]] std::vector<std::string> newDayPromptList() const;
    void setNewDayPromptList(const std::vector<std::string>& list);

  private:
    DefaultsStore& store_;
};

} // namespace kelpa
