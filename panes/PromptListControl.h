#pragma once

#include "panes/Pane.h"
#include "prefs/PrefState.h"

#include <string>
#include <vector>

namespace kelpa {

enum class PromptListKind : std::int64_t { Break, NewDay };

/// One of the lists of prompts of the chosen style. Every edit begins with the list as it is stored, so that
/// nothing is lost that another program wrote, and stores it whole.
class PromptListControl final : public PaneControl {
  public:
    /// `list` is the number of the `PromptListKind` to show and edit.
    PromptListControl(std::string id, std::string label, PreferencesWindow& window, PrefState& state,
                      Setting<std::int64_t>& list);

    void show() override { window().setPrompts(id(), entries()); }
    /// Puts a text on top, also a second copy of one that is there. An empty text changes nothing.
    void promptAdded(const std::string& text) override;
    /// Replaces the first entry equal to `old` where it stands; without one `text` goes on top. An empty
    /// `text` changes nothing.
    void promptEdited(const std::string& old, const std::string& text) override;
    /// Removes every entry equal to `text`.
    void promptDeleted(const std::string& text) override;
    /// Makes the list a stored copy of the style's built-in one.
    void promptsReset() override;

  private:
    [[nodiscard]] bool editsNewDay() const;
    [[nodiscard]] std::vector<std::string> entries() const;
    void store(const std::vector<std::string>& entries);

    PrefState& state_;
    Setting<std::int64_t>& list_;
    Subscription styleTold_;
    Subscription listTold_;
};

} // namespace kelpa
