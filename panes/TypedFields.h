#pragma once

#include "panes/Pane.h"
#include "platform/ports/Timers.h"
#include "prefs/Setting.h"

#include <cstdint>
#include <optional>
#include <string>

namespace kelpa {

/// A field that is typed in. What was typed takes effect when the typing pauses, or at once when the field is
/// left or confirmed: a half-typed value must set nothing in motion. What cannot be stored is never stored.
class TypedField : public PaneControl {
  public:
    /// Window and queue must outlive the field.
    TypedField(PreferencesControl description, ShownPreferences& window, Queue& mainQueue)
        : PaneControl(std::move(description), window), mainQueue_(mainQueue) {}

    /// Leaves the text alone while it is being typed, unless the setting changed meanwhile.
    void show() override;
    void did(PreferencesAct act, const PreferencesValue& value) override;
    void closed() override;

  protected:
    [[nodiscard]] virtual std::string storedText() const = 0;
    /// Why a text cannot be stored; empty for one that can.
    [[nodiscard]] virtual std::string problemOf(const std::string& /*text*/) const { return {}; }
    /// Whether more typing may still make something of a text that cannot be stored.
    [[nodiscard]] virtual bool isHalfTyped(const std::string& /*text*/) const { return false; }
    /// Stores a text without a problem, unless it is what is stored.
    virtual void store(const std::string& text) = 0;

    /// What is being typed, if it differs from what was shown and can be stored.
    [[nodiscard]] std::optional<std::string> pending() const;
    /// Forgets what was typed.
    void endTyping();

  private:
    void typed(const std::string& text);
    void entered(const std::string& text);
    void write(const std::string& text);
    void tellProblem(const std::string& problem) { tell(PreferencesField::Problem, problem); }

    Queue& mainQueue_;
    std::optional<std::string> typed_;
    std::string shown_; ///< what was stored when it was last shown or typing began
    bool writing_ = false;
    Subscription pause_; ///< in the typing, or to read what is told
};

/// One line of text. A line break that another program stored is shown as the backslash and n that stand for
/// one where prompts are typed.
class PlainTextField final : public TypedField {
  public:
    PlainTextField(PreferencesControl description, ShownPreferences& window, Queue& mainQueue,
                   Setting<std::string>& text);

  private:
    [[nodiscard]] std::string storedText() const override;
    void store(const std::string& text) override;

    Setting<std::string>& text_;
    Subscription told_;
};

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
    [[nodiscard]] std::int64_t endWithNumber();

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
