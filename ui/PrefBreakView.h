#pragma once

#include "platform/ports/Queue.h"
#include "prefs/Binding.h"
#include "prefs/Pane.h"
#include "prefs/PrefState.h"

namespace kelpa {

/// The Workflow pane: the lengths of work periods and breaks, the long break, and when the cycle stops by
/// itself. It takes only numbers that the cycle can run with.
class PrefBreakView final : public Pane {
  public:
    /// All must outlive the pane.
    PrefBreakView(PrefState& state, PreferencesWindow& window, Queue& mainQueue);

    void show() override;

  private:
    void addShortBreak();
    void addLongBreak();
    void addOther();
    void addNumber(std::string caption, PreferencesControl description, NumberBinding binding);
    void addSwitch(const char* id, std::string label, Setting<bool>& setting);
    void enableText();

    PrefState& state_;
    PreferencesWindow& window_;
    Queue& mainQueue_;
    Subscription customTold_;
};

} // namespace kelpa
