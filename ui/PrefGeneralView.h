#pragma once

#include "prefs/Pane.h"
#include "prefs/PrefState.h"

namespace kelpa {

/// The General pane. What its switches set in motion is the settings' own affair.
class PrefGeneralView final : public Pane {
  public:
    /// Both must outlive the pane.
    PrefGeneralView(PrefState& state, PreferencesWindow& window);
};

} // namespace kelpa
