#pragma once

#include "prefs/Pane.h"
#include "water/WaterPane.h"

namespace kelpa {

/// The rows of the water pane for reminders in intervals: the working hours and the minutes from drink to
/// drink. An end before the start is taken as it is; no reminder comes then.
class PrefWaterIntervalView {
  public:
    /// All must outlive the view and the pane that it adds its rows to.
    PrefWaterIntervalView(PrefWaterState& state, WaterPane& waterPane, PreferencesWindow& window)
        : state_(state), waterPane_(waterPane), window_(window) {}

    void addTo(Pane& pane);
    void setVisible(bool visible);

  private:
    [[nodiscard]] std::unique_ptr<PaneControl> time(const char* id, const std::string& label,
                                                    Setting<Date, StoredDate>& date,
                                                    void (WaterPane::*set)(Date));
    [[nodiscard]] std::unique_ptr<PaneControl> tiles(const std::string& label);

    PrefWaterState& state_;
    WaterPane& waterPane_;
    PreferencesWindow& window_;
};

} // namespace kelpa
