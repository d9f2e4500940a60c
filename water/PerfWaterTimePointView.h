#pragma once

#include "panes/Pane.h"
#include "water/PrefWaterState.h"

namespace kelpa {

/// The row of the water pane for reminders at chosen times: a tile for each, in the order of the day. The
/// same clock time of two days is two tiles.
class PerfWaterTimePointView final : public PaneControl {
  public:
    static constexpr const char* controlId = "selectedTimings";

    /// Both must outlive the view.
    PerfWaterTimePointView(PrefWaterState& state, ShownPreferences& window);

    void show() override;
    void did(PreferencesAct act, const PreferencesValue& value) override;

    /// Adds the instant as it is: the same clock time of another day is a point of its own.
    static void addTimePoint(PrefWaterState& state, Date date);
    /// Removes the first point so many minutes after midnight. The last point stays: a day needs one.
    static void removeTimePoint(PrefWaterState& state, std::int64_t minutes);
    /// A point's time of day as "hh:mm" in the current calendar.
    [[nodiscard]] static std::string hoursAndMintes(const Calendar& calendar, Date form);

  private:
    PrefWaterState& state_;
    Subscription told_;
};

} // namespace kelpa
