#pragma once

#include "prefs/Pane.h"
#include "prefs/PrefState.h"

namespace kelpa {

/// The Style pane: the tone of the prompts, and the two lists of the chosen tone to edit.
class PrefStyleView final : public Pane {
  public:
    static constexpr const char* styleId = "breakStyle";
    static constexpr const char* listId = "promptList";       ///< which list is edited
    static constexpr const char* promptsId = "promptEntries"; ///< that list

    /// Both must outlive the pane.
    PrefStyleView(PrefState& state, PreferencesWindow& window);
};

} // namespace kelpa
