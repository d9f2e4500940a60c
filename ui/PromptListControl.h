#pragma once

#include "prefs/PaneControl.h"
#include "prefs/PrefState.h"
#include "prefs/PromptListEditor.h"

namespace kelpa {

/// One list of prompts of the chosen style. Every edit begins with the list as it is stored, so that nothing
/// is lost that another program wrote.
class PromptListControl final : public PaneControl {
  public:
    PromptListControl(std::string id, std::string label, PreferencesWindow& window, PrefState& state);

    [[nodiscard]] PromptListKind kind() const { return kind_; }
    void select(PromptListKind kind);

    void show() override;
    void promptAdded(const std::string& text) override { editor().add(text); }
    void promptEdited(const std::string& old, const std::string& text) override { editor().edit(old, text); }
    void promptDeleted(const std::string& text) override { editor().remove(text); }
    void promptsReset() override { editor().reset(); }

  private:
    [[nodiscard]] PromptListEditor editor() const;

    PrefState& state_;
    PromptListKind kind_ = PromptListKind::Break;
    Subscription told_;
};

} // namespace kelpa
