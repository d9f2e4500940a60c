#include "water/PerfWaterTimePointView.h"

#include "base/Text.h"
#include "logging/SharedLogger.h"
#include "panes/ChoiceControls.h"

#include <algorithm>
#include <cstdio>
#include <tuple>

namespace kelpa {

PerfWaterTimePointView::PerfWaterTimePointView(PrefWaterState& state, PreferencesWindow& window)
    : PaneControl({controlId, PreferencesControlKind::TimePoints, localized("Time points"), {}}, window),
      state_(state), told_(state.selectedTimings.observe([this](const auto&) { show(); })) {}

void PerfWaterTimePointView::show() {
    std::vector<TimePoint> points;
    for (const Date point : state_.selectedTimings()) {
        const CivilTime time = state_.calendar().civil(point);
        const std::string text = hoursAndMintes(state_.calendar(), point);
        points.push_back({time.hour, time.minute, text, localized("Remove this time") + " " + text});
    }
    const auto earlier = [](const TimePoint& a, const TimePoint& b) {
        return std::tie(a.hour, a.minute) < std::tie(b.hour, b.minute);
    };
    std::sort(points.begin(), points.end(), earlier);
    window().setTimePoints(id(), points);
    propose();
}

void PerfWaterTimePointView::propose() {
    const Calendar& calendar = state_.calendar();
    window().setTimeOfDay(id(), (calendar.civil(calendar.now()).hour + 1) % 24, 0);
}

void PerfWaterTimePointView::timePointAdded(int hour, int minute) {
    if (isTimeOfDay(hour, minute))
        addTimePoint(state_, state_.calendar().today(hour, minute, 0));
}

void PerfWaterTimePointView::timePointRemoved(int hour, int minute) {
    removeTimePoint(state_, hour, minute);
}

void PerfWaterTimePointView::addTimePoint(PrefWaterState& state, Date date) {
    auto points = state.selectedTimings();
    points.insert(date);
    state.selectedTimings.set(points);
}

void PerfWaterTimePointView::removeTimePoint(PrefWaterState& state, int hour, int minute) {
    auto points = state.selectedTimings();
    if (points.size() <= 1)
        return;
    const auto found = std::find_if(points.begin(), points.end(), [&](Date point) {
        const CivilTime time = state.calendar().civil(point);
        return time.hour == hour && time.minute == minute;
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
