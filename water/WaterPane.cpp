#include "water/WaterPane.h"

#include "logging/SharedLogger.h"

#include <algorithm>
#include <cstdio>

namespace kelpa {

template <class Setting, class Value>
void WaterPane::change(Setting& setting, const Value& value) {
    const bool changes = setting() != value;
    setting.set(value);
    if (changes)
        state_.updateSchedule();
}

void WaterPane::setEnable(bool enable) {
    const bool changes = state_.enable() != enable;
    state_.enable.set(enable);
    if (!changes)
        return;
    if (enable) {
        app_.insetWaterItem();
        state_.schedule();
    } else {
        app_.removeWaterItem();
        app_.closeWaterView();
        state_.cancel();
    }
}

void WaterPane::setTarget(std::int64_t millilitres) {
    change(state_.target, millilitres);
}

void WaterPane::setMode(WaterMode mode) {
    change(state_.mode, mode);
}

void WaterPane::setIntervalStartDate(Date date) {
    change(state_.intervalStartDate, date);
}

void WaterPane::setIntervalEndDate(Date date) {
    change(state_.intervalEndDate, date);
}

void WaterPane::setSelectedInterval(std::int64_t minutes) {
    change(state_.selectedInterval, minutes);
}

void WaterPane::setSelectedTimings(const std::set<Date>& points) {
    change(state_.selectedTimings, points);
}

void WaterPane::addTimePoint(Date date) {
    auto points = state_.selectedTimings();
    points.insert(date);
    setSelectedTimings(points);
}

void WaterPane::removeTimePoint(int hour, int minute) {
    auto points = state_.selectedTimings();
    if (points.size() <= 1)
        return;
    const auto found = std::find_if(points.begin(), points.end(), [&](Date point) {
        const CivilTime time = state_.calendar().civil(point);
        return time.hour == hour && time.minute == minute;
    });
    if (found == points.end()) {
        logger().error("Can't find item", {"PerfWaterTimePointView", "removeTimePoint()"});
        return;
    }
    points.erase(found);
    setSelectedTimings(points);
}

std::string WaterPane::hoursAndMintes(const Calendar& calendar, Date form) {
    const CivilTime time = calendar.civil(form);
    char text[16];
    std::snprintf(text, sizeof text, "%02d:%02d", time.hour, time.minute);
    return text;
}

} // namespace kelpa
