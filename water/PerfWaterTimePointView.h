#pragma once

#include "prefs/PaneControl.h"
#include "water/WaterPane.h"

namespace kelpa {

/// The row of the water pane for reminders at chosen times: a tile for each, in the order of the day. The
/// same clock time of two days is two tiles.
class PerfWaterTimePointView final : public PaneControl {
  public:
    static constexpr const char* controlId = "selectedTimings";

    /// All must outlive the view.
    PerfWaterTimePointView(PrefWaterState& state, WaterPane& waterPane, PreferencesWindow& window);

    void show() override;
    void timePointAdded(int hour, int minute) override;
    void timePointRemoved(int hour, int minute) override;

  private:
    /// The next full hour is as good a guess as any at what will be added.
    void propose();

    PrefWaterState& state_;
    WaterPane& waterPane_;
    Subscription told_;
};

} // namespace kelpa
