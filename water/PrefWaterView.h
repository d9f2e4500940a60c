#pragma once

#include "panes/ChoiceControls.h"
#include "platform/ports/Timers.h"
#include "water/PrefWaterState.h"

#include <memory>

namespace kelpa {

/// The day's target as the pane sets it: in range, in whole steps, and only when that makes another one.
class SettableTarget final : public Setting<std::int64_t> {
  public:
    explicit SettableTarget(PrefWaterState& state) : state_(state) {}

    [[nodiscard]] std::int64_t operator()() const override { return state_.target(); }
    void set(const std::int64_t& millilitres) override;
    Subscription observe(Told told) override { return state_.target.observe(std::move(told)); }

  private:
    PrefWaterState& state_;
};

/// The rows of the water pane for reminders in intervals: the working hours and the minutes from drink to
/// drink. An end before the start is taken as it is; no reminder comes then.
class PrefWaterIntervalView {
  public:
    /// Adds the rows to the pane, which both others must outlive.
    PrefWaterIntervalView(Pane& pane, PrefWaterState& state, ShownPreferences& window);

    void setVisible(bool visible);

  private:
    ShownPreferences& window_;
};

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

/// The Water pane: the reminder's switch, the day's target, the mode, and the rows of the chosen mode.
class PrefWaterView final : public Pane {
  public:
    /// All must outlive the pane.
    PrefWaterView(PrefWaterState& state, ShownPreferences& window, Queue& mainQueue);

    void show() override;

  private:
    void addOptions(Queue& mainQueue);
    void addSchedule();
    void showMode();

    PrefWaterState& state_;
    ShownPreferences& window_;
    SettableTarget target_;
    NumberOf<WaterMode> mode_;
    std::unique_ptr<PrefWaterIntervalView> interval_;
    Subscription modeTold_;
};

} // namespace kelpa
