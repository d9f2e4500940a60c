#pragma once

#include "prefs/Binding.h"
#include "ui/TypedField.h"

#include <cstdint>
#include <optional>

namespace kelpa {

/// A whole number that is typed, or stepped by 1 within its range. A stored number out of range is shown as
/// it is and stays until it is edited.
class NumberTextField final : public TypedField {
  public:
    NumberTextField(PreferencesControl description, PreferencesWindow& window, Queue& mainQueue,
                    NumberBinding number);

    void stepped(int direction) override;
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

    NumberBinding number_;
    Subscription told_;
};

} // namespace kelpa
