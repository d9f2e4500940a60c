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
    PromptListControl(std::string id, std::string label, ShownPreferences& window, PrefState& state,
                      Setting<std::int64_t>& list);

    void show() override;
    void did(PreferencesAct act, const PreferencesValue& value) override;

  private:
    /// Puts a text on top, also a second copy of one that is there. An empty text changes nothing.
    void add(const std::string& text);
    /// Replaces the first entry equal to the old text where it stands; without one the new one goes on top.
    /// An empty one changes nothing.
    void edit(const PreferencesEdit& edit);
    /// Removes every entry equal to `text`.
    void remove(const std::string& text);
    /// Makes the list a stored copy of the style's built-in one.
    void reset();
    [[nodiscard]] bool editsNewDay() const;
    [[nodiscard]] std::vector<std::string> entries() const;
    void store(const std::vector<std::string>& entries);

    PrefState& state_;
    Setting<std::int64_t>& list_;
    Subscription styleTold_, listTold_;
};

} // namespace kelpa
