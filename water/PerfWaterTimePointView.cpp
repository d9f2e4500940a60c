#include "water/PerfWaterTimePointView.h"

#include "base/Localized.h"
#include "water/TimeOfDayControl.h"

#include <algorithm>
#include <tuple>

namespace kelpa {

PerfWaterTimePointView::PerfWaterTimePointView(PrefWaterState& state, WaterPane& waterPane,
                                               PreferencesWindow& window)
    : PaneControl({controlId, PreferencesControlKind::TimePoints, localized("Time points"), {}}, window),
      state_(state), waterPane_(waterPane),
      told_(state.selectedTimings.observe([this](const auto&) { show(); })) {}

void PerfWaterTimePointView::show() {
    std::vector<TimePoint> points;
    for (const Date point : state_.selectedTimings()) {
        const CivilTime time = state_.calendar().civil(point);
        const std::string text = WaterPane::hoursAndMintes(state_.calendar(), point);
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
        waterPane_.addTimePoint(state_.calendar().today(hour, minute, 0));
}

void PerfWaterTimePointView::timePointRemoved(int hour, int minute) {
    waterPane_.removeTimePoint(hour, minute);
}

} // namespace kelpa
