#include "panes/ChoiceControls.h"

#include <algorithm>

namespace kelpa {

namespace {

constexpr std::int64_t minutesAnHour = 60;

} // namespace

SwitchControl::SwitchControl(std::string id, std::string label, ShownPreferences& window, Setting<bool>& on)
    : PaneControl({std::move(id), PreferencesControlKind::Switch, std::move(label), {}}, window), on_(on),
      told_(on.observe([this](bool) { show(); })) {}

void SwitchControl::did(PreferencesAct act, const PreferencesValue& value) {
    const auto* on = std::get_if<bool>(&value);
    if (act == PreferencesAct::Entered && on != nullptr)
        on_.set(*on);
}

void ButtonControl::did(PreferencesAct act, const PreferencesValue&) {
    if (act == PreferencesAct::Pressed)
        pressed_();
}

ChoiceControl::ChoiceControl(PreferencesControl description, ShownPreferences& window,
                             std::vector<PreferencesEntry> choices, Setting<std::int64_t>& value)
    : PaneControl(std::move(description), window), choices_(std::move(choices)), value_(value),
      told_(value.observe([this](std::int64_t) { show(); })) {}

void ChoiceControl::show() {
    tell(PreferencesField::Entries, choices_);
    tell(PreferencesField::Value, value_());
}

void ChoiceControl::did(PreferencesAct act, const PreferencesValue& value) {
    const auto* chosen = std::get_if<std::int64_t>(&value);
    if (act != PreferencesAct::Entered || chosen == nullptr || *chosen == value_())
        return;
    const auto offers = [&](const PreferencesEntry& choice) { return choice.value == *chosen; };
    if (std::any_of(choices_.begin(), choices_.end(), offers))
        value_.set(*chosen);
}

TimeOfDayControl::TimeOfDayControl(std::string id, std::string label, ShownPreferences& window,
                                   const Calendar& calendar, Setting<Date>& date)
    : PaneControl({std::move(id), PreferencesControlKind::TimeOfDay, std::move(label), {}}, window),
      calendar_(calendar), date_(date), told_(date.observe([this](Date) { show(); })) {}

void TimeOfDayControl::show() {
    tell(PreferencesField::Value, minutesOf(calendar_.civil(date_())));
}

void TimeOfDayControl::did(PreferencesAct act, const PreferencesValue& value) {
    const auto* minutes = std::get_if<std::int64_t>(&value);
    if (act != PreferencesAct::Entered || minutes == nullptr ||
        *minutes == minutesOf(calendar_.civil(date_())))
        return;
    if (const auto date = todayAt(calendar_, *minutes))
        date_.set(*date);
}

std::int64_t minutesOf(const CivilTime& time) {
    return time.hour * minutesAnHour + time.minute;
}

std::optional<Date> todayAt(const Calendar& calendar, std::int64_t minutes) {
    if (minutes < 0 || minutes >= 24 * minutesAnHour)
        return std::nullopt;
    return calendar.today(static_cast<int>(minutes / minutesAnHour),
                          static_cast<int>(minutes % minutesAnHour), 0);
}

} // namespace kelpa
