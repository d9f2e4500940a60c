#pragma once

#include "base/Calendar.h"
#include "prefs/Binding.h"
#include "prefs/PaneControl.h"

#include <string>

namespace kelpa {

/// A date of which only the time of day counts. What a person chooses is stored on today's date.
class TimeOfDayControl final : public PaneControl {
  public:
    /// The calendar must outlive the control.
    TimeOfDayControl(std::string id, std::string label, PreferencesWindow& window, const Calendar& calendar,
                     Binding<Date> date);

    void show() override;
    void timeEntered(int hour, int minute) override;

  private:
    const Calendar& calendar_;
    Binding<Date> date_;
    Subscription told_;
};

/// Whether a clock can show it.
[[nodiscard]] bool isTimeOfDay(int hour, int minute);

} // namespace kelpa
