#pragma once

#include "base/Calendar.h"
#include "panes/Pane.h"
#include "prefs/Setting.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace kelpa {

/// A setting that is on or off. Each use of the switch writes it, also where the store already says so: what
/// another program stored has set nothing in motion.
class SwitchControl final : public PaneControl {
  public:
    /// The setting must outlive the control, as for every kind of control.
    SwitchControl(std::string id, std::string label, ShownPreferences& window, Setting<bool>& on);

    void show() override { tell(PreferencesField::Value, on_()); }
    void did(PreferencesAct act, const PreferencesValue& value) override;

  private:
    Setting<bool>& on_;
    Subscription told_;
};

/// Something that is done at the press of a button.
class ButtonControl final : public PaneControl {
  public:
    ButtonControl(std::string id, std::string label, ShownPreferences& window, std::function<void()> pressed)
        : PaneControl({std::move(id), PreferencesControlKind::Button, std::move(label), {}}, window),
          pressed_(std::move(pressed)) {}

    void show() override {}
    void did(PreferencesAct act, const PreferencesValue& value) override;

  private:
    std::function<void()> pressed_;
};

/// One of a few entries, as a list, segments or tiles. A stored value that is none of them leaves all
/// unchosen.
class ChoiceControl final : public PaneControl {
  public:
    ChoiceControl(PreferencesControl description, ShownPreferences& window,
                  std::vector<PreferencesEntry> choices, Setting<std::int64_t>& value);

    void show() override;
    void did(PreferencesAct act, const PreferencesValue& value) override;

  private:
    std::vector<PreferencesEntry> choices_;
    Setting<std::int64_t>& value_;
    Subscription told_;
};

/// A setting whose value is a case of an enumeration, as the number that stands for the case.
template <class E>
class NumberOf final : public Setting<std::int64_t> {
  public:
    explicit NumberOf(Setting<E>& setting) : setting_(setting) {}

    [[nodiscard]] std::int64_t operator()() const override { return static_cast<std::int64_t>(setting_()); }
    /// Takes only numbers of cases.
    void set(const std::int64_t& number) override { setting_.set(static_cast<E>(number)); }
    Subscription observe(std::function<void(const std::int64_t&)> told) override {
        return setting_.observe(
            [told = std::move(told)](E value) { told(static_cast<std::int64_t>(value)); });
    }

  private:
    Setting<E>& setting_;
};

/// A date of which only the time of day counts. What a person chooses is stored on today's date.
class TimeOfDayControl final : public PaneControl {
  public:
    /// The calendar must outlive the control.
    TimeOfDayControl(std::string id, std::string label, ShownPreferences& window, const Calendar& calendar,
                     Setting<Date>& date);

    void show() override;
    void did(PreferencesAct act, const PreferencesValue& value) override;

  private:
    const Calendar& calendar_;
    Setting<Date>& date_;
    Subscription told_;
};

/// A time as a number: its minutes since midnight.
[[nodiscard]] std::int64_t minutesOf(const CivilTime& time);
/// The instant at so many minutes after today's midnight; nothing for what is no time of day.
[[nodiscard]] std::optional<Date> todayAt(const Calendar& calendar, std::int64_t minutes);

} // namespace kelpa
