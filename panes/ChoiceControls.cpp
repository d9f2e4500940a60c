#include "panes/ChoiceControls.h"

#include <algorithm>

namespace kelpa {

SwitchControl::SwitchControl(std::string id, std::string label, PreferencesWindow& window, Setting<bool>& on)
    : PaneControl({std::move(id), PreferencesControlKind::Switch, std::move(label), {}}, window), on_(on),
      told_(on.observe([this](bool) { show(); })) {}

ChoiceControl::ChoiceControl(PreferencesControl description, PreferencesWindow& window,
                             std::vector<PreferencesChoice> choices, Setting<std::int64_t>& value)
    : PaneControl(std::move(description), window), choices_(std::move(choices)), value_(value),
      told_(value.observe([this](std::int64_t) { show(); })) {}

void ChoiceControl::show() {
    window().setChoices(id(), choices_);
    window().setChosen(id(), value_());
}

void ChoiceControl::chosen(std::int64_t value) {
    const auto offers = [&](const PreferencesChoice& choice) { return choice.value == value; };
    if (value != value_() && std::any_of(choices_.begin(), choices_.end(), offers))
        value_.set(value);
}

TimeOfDayControl::TimeOfDayControl(std::string id, std::string label, PreferencesWindow& window,
                                   const Calendar& calendar, Setting<Date>& date)
    : PaneControl({std::move(id), PreferencesControlKind::TimeOfDay, std::move(label), {}}, window),
      calendar_(calendar), date_(date), told_(date.observe([this](Date) { show(); })) {}

void TimeOfDayControl::show() {
    const CivilTime time = calendar_.civil(date_());
    window().setTimeOfDay(id(), time.hour, time.minute);
}

void TimeOfDayControl::timeEntered(int hour, int minute) {
    const CivilTime shown = calendar_.civil(date_());
    const bool changes = hour != shown.hour || minute != shown.minute;
    if (changes && isTimeOfDay(hour, minute))
        date_.set(calendar_.today(hour, minute, 0));
}

bool isTimeOfDay(int hour, int minute) {
    return hour >= 0 && hour < 24 && minute >= 0 && minute < 60;
}

} // namespace kelpa
