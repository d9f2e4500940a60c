#include "water/PrefWaterView.h"

#include "base/Text.h"
#include "logging/SharedLogger.h"
#include "panes/TypedFields.h"

#include <algorithm>
#include <cstdio>

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

PerfWaterTimePointView::PerfWaterTimePointView(PrefWaterState& state, ShownPreferences& window)
    : PaneControl({controlId, PreferencesControlKind::TimePoints, localized("Time points"), {}}, window),
      state_(state), told_(state.selectedTimings.observe([this](const auto&) { show(); })) {}

void PerfWaterTimePointView::show() {
    const Calendar& calendar = state_.calendar();
    std::vector<PreferencesEntry> points;
    for (const Date point : state_.selectedTimings()) {
        const std::string text = hoursAndMintes(calendar, point);
        points.push_back(
            {minutesOf(calendar.civil(point)), text, localized("Remove this time") + " " + text});
    }
    const auto earlier = [](const auto& a, const auto& b) { return a.value < b.value; };
    std::sort(points.begin(), points.end(), earlier);
    tell(PreferencesField::Entries, points);
    // The next full hour is as good a guess as any at what will be added.
    tell(PreferencesField::Value, minutesOf({0, 0, 0, (calendar.civil(calendar.now()).hour + 1) % 24, 0, 0}));
}

void PerfWaterTimePointView::did(PreferencesAct act, const PreferencesValue& value) {
    const auto* minutes = std::get_if<std::int64_t>(&value);
    if (minutes == nullptr)
        return;
    if (act == PreferencesAct::Removed)
        removeTimePoint(state_, *minutes);
    else if (const auto date = todayAt(state_.calendar(), *minutes); date && act == PreferencesAct::Added)
        addTimePoint(state_, *date);
}

void PerfWaterTimePointView::addTimePoint(PrefWaterState& state, Date date) {
    auto points = state.selectedTimings();
    points.insert(date);
    state.selectedTimings.set(points);
}

void PerfWaterTimePointView::removeTimePoint(PrefWaterState& state, std::int64_t minutes) {
    auto points = state.selectedTimings();
    if (points.size() <= 1)
        return;
    const auto found = std::find_if(points.begin(), points.end(), [&](Date point) {
        return minutesOf(state.calendar().civil(point)) == minutes;
    });
    if (found == points.end()) {
        logger().error("Can't find item", {"PerfWaterTimePointView", "removeTimePoint()"});
        return;
    }
    points.erase(found);
    state.selectedTimings.set(points);
}

std::string PerfWaterTimePointView::hoursAndMintes(const Calendar& calendar, Date form) {
    const CivilTime time = calendar.civil(form);
    char text[16];
    std::snprintf(text, sizeof text, "%02d:%02d", time.hour, time.minute);
    return text;
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
