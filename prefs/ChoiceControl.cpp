#include "prefs/ChoiceControl.h"

#include <algorithm>

namespace kelpa {

ChoiceControl::ChoiceControl(PreferencesControl description, PreferencesWindow& window,
                             std::vector<PreferencesChoice> choices, Binding<std::int64_t> value)
    : PaneControl(std::move(description), window), choices_(std::move(choices)), value_(std::move(value)),
      told_(value_.observe([this] { show(); })) {}

void ChoiceControl::show() {
    window().setChoices(id(), choices_);
    window().setChosen(id(), value_.get());
}

void ChoiceControl::chosen(std::int64_t value) {
    const auto offers = [&](const PreferencesChoice& choice) { return choice.value == value; };
    if (value != value_.get() && std::any_of(choices_.begin(), choices_.end(), offers))
        value_.set(value);
}

} // namespace kelpa
