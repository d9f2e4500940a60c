#pragma once

#include "panes/Pane.h"
#include "platform/ports/Busy.h"
#include "platform/ports/Timers.h"
#include "prefs/PrefState.h"

#include <string>

namespace kelpa {

// What is given here must outlive the pane.

/// Adds the section of the word before a break to the Workflow pane.
void addNoticeSection(Pane& pane, PrefState& state, ShownPreferences& window, Queue& mainQueue);

/// The rows of the Workflow pane for breaks that wait while somebody is busy. What is chosen for that can be
/// changed while it is on; what this desktop cannot be asked for says why.
class PrefHoldView {
  public:
    /// Adds a section to the pane.
    PrefHoldView(Pane& pane, PrefState& state, ShownPreferences& window, Queue& mainQueue, BusyProbe& probe);

    /// Asks what the desktop can be asked for now, and shows it.
    void show();

  private:
    void enable(bool hold);

    PrefState& state_;
    ShownPreferences& window_;
    BusyProbe& probe_;
    std::set<BusyReason> available_;
    Subscription told_;
};

} // namespace kelpa
