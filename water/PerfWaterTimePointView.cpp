#include "water/PerfWaterTimePointView.h"

#include "base/Text.h"
#include "logging/SharedLogger.h"
#include "panes/ChoiceControls.h"

#include <algorithm>
#include <cstdio>

namespace kelpa {

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

} // namespace kelpa
