#include "water/PrefWaterIntervalView.h"

#include "base/Localized.h"
#include "prefs/ChoiceControl.h"
#include "water/TimeOfDayControl.h"

namespace kelpa {

namespace {

constexpr const char* startId = "intervalStartDate";
constexpr const char* endId = "intervalEndDate";
constexpr const char* intervalId = "selectedInterval";

std::vector<PreferencesChoice> intervals() {
    std::vector<PreferencesChoice> all;
    for (const std::int64_t minutes : values(WaterMode::interval))
        all.push_back({minutes, std::to_string(minutes) + localized("min")});
    return all;
}

} // namespace

void PrefWaterIntervalView::addTo(Pane& pane) {
    const std::string start = localized("Start time");
    const std::string end = localized("End time");
    const std::string interval = localized("water.interval");
    pane.addRow(start, time(startId, start, state_.intervalStartDate, &WaterPane::setIntervalStartDate));
    pane.addRow(end, time(endId, end, state_.intervalEndDate, &WaterPane::setIntervalEndDate));
    pane.addRow(interval, tiles(interval));
}

std::unique_ptr<PaneControl> PrefWaterIntervalView::time(const char* id, const std::string& label,
                                                         Setting<Date, StoredDate>& date,
                                                         void (WaterPane::*set)(Date)) {
    const auto write = [&waterPane = waterPane_, set](Date chosen) { (waterPane.*set)(chosen); };
    return std::make_unique<TimeOfDayControl>(id, label, window_, state_.calendar(), bindingTo(date, write));
}

std::unique_ptr<PaneControl> PrefWaterIntervalView::tiles(const std::string& label) {
    const auto write = [&waterPane = waterPane_](std::int64_t minutes) {
        waterPane.setSelectedInterval(minutes);
    };
    return std::make_unique<ChoiceControl>(
        PreferencesControl{intervalId, PreferencesControlKind::Tiles, label, {}}, window_, intervals(),
        bindingTo(state_.selectedInterval, write));
}

void PrefWaterIntervalView::setVisible(bool visible) {
    for (const char* id : {startId, endId, intervalId})
        window_.setVisible(id, visible);
}

} // namespace kelpa
