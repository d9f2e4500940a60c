#pragma once

#include "prefs/Binding.h"
#include "prefs/Pane.h"
#include "water/PrefWaterIntervalView.h"
#include "water/WaterPane.h"

#include <memory>

namespace kelpa {

/// Makes the control with minus, digits and plus, which belongs to the user interface above.
class AccumulatorMaker {
  public:
    virtual ~AccumulatorMaker() = default;
    [[nodiscard]] virtual std::unique_ptr<PaneControl>
    makeAccumulator(PreferencesControl description, NumberBinding value, std::int64_t delta) = 0;
};

/// The Water pane: the reminder's switch, the day's target, the mode, and the rows of the chosen mode.
class PrefWaterView final : public Pane {
  public:
    /// All must outlive the pane.
    PrefWaterView(PrefWaterState& state, App& app, PreferencesWindow& window, AccumulatorMaker& accumulators);

    void show() override;

  private:
    void addOptions(AccumulatorMaker& accumulators);
    void addSchedule();
    [[nodiscard]] std::unique_ptr<PaneControl> enable();
    [[nodiscard]] NumberBinding target();
    [[nodiscard]] std::unique_ptr<PaneControl> mode();
    void showMode();

    PrefWaterState& state_;
    PreferencesWindow& window_;
    WaterPane waterPane_;
    PrefWaterIntervalView interval_;
    Subscription modeTold_;
};

} // namespace kelpa
