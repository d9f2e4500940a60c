#pragma once

#include "panes/Pane.h"
#include "platform/ports/Timers.h"
#include "prefs/Setting.h"

#include <memory>
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
    ~TypedField() override { calm(); }

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
    void after(double seconds, std::function<void()> work);
    void calm();

    Queue& mainQueue_;
    std::optional<std::string> typed_;
    std::string shown_; ///< what was stored when it was last shown or typing began
    bool writing_ = false;
    std::shared_ptr<WorkItem> pause_;
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

} // namespace kelpa
