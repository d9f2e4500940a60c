#include "water/TimeOfDayControl.h"

namespace kelpa {

TimeOfDayControl::TimeOfDayControl(std::string id, std::string label, PreferencesWindow& window,
                                   const Calendar& calendar, Binding<Date> date)
    : PaneControl({std::move(id), PreferencesControlKind::TimeOfDay, std::move(label), {}}, window),
      calendar_(calendar), date_(std::move(date)), told_(date_.observe([this] { show(); })) {}

void TimeOfDayControl::show() {
    const CivilTime time = calendar_.civil(date_.get());
    window().setTimeOfDay(id(), time.hour, time.minute);
}

void TimeOfDayControl::timeEntered(int hour, int minute) {
    const CivilTime shown = calendar_.civil(date_.get());
    const bool changes = hour != shown.hour || minute != shown.minute;
    if (changes && isTimeOfDay(hour, minute))
        date_.set(calendar_.today(hour, minute, 0));
}

bool isTimeOfDay(int hour, int minute) {
    return hour >= 0 && hour < 24 && minute >= 0 && minute < 60;
}

} // namespace kelpa
