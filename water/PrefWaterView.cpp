#include "water/PrefWaterView.h"

#include "base/Text.h"
#include "panes/NumberTextField.h"
#include "water/PerfWaterTimePointView.h"

#include <algorithm>

namespace kelpa {

namespace {

constexpr std::int64_t targetStep = 50; ///< ml, as is the range below
constexpr NumberRange targetRange{50, 20000};
constexpr const char* modeId = "mode";
constexpr const char* startId = "intervalStartDate";
constexpr const char* endId = "intervalEndDate";
constexpr const char* intervalId = "selectedInterval";

std::vector<PreferencesEntry> modes() {
    std::vector<PreferencesEntry> all;
    for (const WaterMode mode : allWaterModes())
        all.push_back({static_cast<std::int64_t>(mode), desc(mode), {}});
    return all;
}

std::vector<PreferencesEntry> intervals() {
    std::vector<PreferencesEntry> all;
    for (const std::int64_t minutes : values(WaterMode::interval))
        all.push_back({minutes, std::to_string(minutes) + localized("min"), {}});
    return all;
}

} // namespace

void SettableTarget::set(const std::int64_t& millilitres) {
    const std::int64_t inRange = std::clamp(millilitres, targetRange.lowest, targetRange.highest);
    const std::int64_t settable = (inRange + targetStep / 2) / targetStep * targetStep;
    if (settable != state_.target())
        state_.target.set(settable);
}

PrefWaterIntervalView::PrefWaterIntervalView(Pane& pane, PrefWaterState& state, ShownPreferences& window)
    : window_(window) {
    const std::string start = localized("Start time");
    const std::string end = localized("End time");
    const std::string interval = localized("water.interval");
    pane.addRow<TimeOfDayControl>(start, startId, start, window, state.calendar(), state.intervalStartDate);
    pane.addRow<TimeOfDayControl>(end, endId, end, window, state.calendar(), state.intervalEndDate);
    pane.addRow<ChoiceControl>(interval,
                               PreferencesControl{intervalId, PreferencesControlKind::Tiles, interval, {}},
                               window, intervals(), state.selectedInterval);
}

void PrefWaterIntervalView::setVisible(bool visible) {
    for (const char* id : {startId, endId, intervalId})
        window_.show(id, PreferencesField::Visible, visible);
}

PrefWaterView::PrefWaterView(PrefWaterState& state, ShownPreferences& window, Queue& mainQueue)
    : Pane(localized("Water"), "drop.circle"), state_(state), window_(window), target_(state),
      mode_(state.mode), modeTold_(state.mode.observe([this](WaterMode) { showMode(); })) {
    addOptions(mainQueue);
    addSchedule();
}

void PrefWaterView::addOptions(Queue& mainQueue) {
    addSection(localized("Options"));
    addRow<SwitchControl>(localized("Enable"), "enable", localized("Enable drink water reminder"), window_,
                          state_.enable);
    const std::string target = localized("Target");
    addRow<DigitalAccumulatorView>(
        target, PreferencesControl{"target", PreferencesControlKind::Accumulator, target, localized("ml")},
        window_, mainQueue, target_, targetRange, targetStep);
    const std::string mode = localized("Mode");
    addRow<ChoiceControl>(mode, PreferencesControl{modeId, PreferencesControlKind::Picker, mode, {}}, window_,
                          modes(), mode_);
}

void PrefWaterView::addSchedule() {
    addSection(localized("Schedule"));
    interval_ = std::make_unique<PrefWaterIntervalView>(*this, state_, window_);
    addRow<PerfWaterTimePointView>({}, state_, window_);
}

void PrefWaterView::show() {
    Pane::show();
    showMode();
}

void PrefWaterView::showMode() {
    const WaterMode mode = state_.mode();
    window_.show(modeId, PreferencesField::Hint, tip(mode));
    interval_->setVisible(mode == WaterMode::interval);
    window_.show(PerfWaterTimePointView::controlId, PreferencesField::Visible, mode == WaterMode::timing);
}

} // namespace kelpa
