#pragma once

#include "panes/TypedField.h"

#include <cstdint>
#include <optional>

namespace kelpa {

/// What a person may type for a number. The stored one may lie outside.
struct NumberRange {
    std::int64_t lowest = 0;
    std::int64_t highest = 0;
};

/// A whole number that is typed, or stepped by 1 within its range. A stored number out of range is shown as
/// it is and stays until it is edited.
class NumberTextField final : public TypedField {
  public:
    NumberTextField(PreferencesControl description, ShownPreferences& window, Queue& mainQueue,
                    Setting<std::int64_t>& number, NumberRange range);

    void did(PreferencesAct act, const PreferencesValue& value) override;
    /// The number in the field: the one being typed where it can be stored, else the stored one. Ends typing.
    [[nodiscard]] std::int64_t take();

    /// A number as people type it: digits, also full-width ones, with a minus sign before or blanks around
    /// them. Nothing for anything else.
    [[nodiscard]] static std::optional<std::int64_t> parse(const std::string& text);

  private:
    [[nodiscard]] std::string storedText() const override;
    [[nodiscard]] std::string problemOf(const std::string& text) const override;
    [[nodiscard]] bool isHalfTyped(const std::string& text) const override;
    void store(const std::string& text) override;
    void set(std::int64_t value);

    Setting<std::int64_t>& number_;
    NumberRange range_;
    Subscription told_;
};

/// Minus, a field of digits, and plus. The buttons know no bounds; what may be stored is the setting's
/// affair. A sum beyond the integers ends the process.
class DigitalAccumulatorView final : public PaneControl {
  public:
    DigitalAccumulatorView(const PreferencesControl& description, ShownPreferences& window, Queue& mainQueue,
                           Setting<std::int64_t>& value, NumberRange range, std::int64_t delta);

    void show() override { field_.show(); }
    void did(PreferencesAct act, const PreferencesValue& value) override;
    void closed() override { field_.closed(); }

  private:
    Setting<std::int64_t>& value_;
    std::int64_t delta_;
    NumberTextField field_;
};

} // namespace kelpa
