#pragma once

#include "desk/Journal.h"
#include "platform/ports/PreferencesWindow.h"

#include <map>

namespace kelpa::desk {

/// A preferences window that keeps what it was told last, for a script or a test to look at and act on.
class RecordingPreferences final : public PreferencesWindow {
  public:
    /// What a control shows.
    class Control {
      public:
        [[nodiscard]] bool on() const { return value<bool>(PreferencesField::Value); }
        [[nodiscard]] std::string text() const { return value<std::string>(PreferencesField::Value); }
        /// What is chosen, or the minutes of a time; 0 before it was told.
        [[nodiscard]] std::int64_t number() const { return value<std::int64_t>(PreferencesField::Value); }
        [[nodiscard]] std::vector<PreferencesEntry> entries() const {
            return value<std::vector<PreferencesEntry>>(PreferencesField::Entries);
        }
        [[nodiscard]] std::string hint() const { return value<std::string>(PreferencesField::Hint); }
        [[nodiscard]] std::string problem() const { return value<std::string>(PreferencesField::Problem); }
        [[nodiscard]] bool enabled() const { return value(PreferencesField::Enabled, true); }
        [[nodiscard]] bool visible() const { return value(PreferencesField::Visible, true); }
        /// How often the control was told anything.
        [[nodiscard]] int told() const { return told_; }

      private:
        friend RecordingPreferences;
        template <class T>
        [[nodiscard]] T value(PreferencesField field, T otherwise = {}) const {
            const auto found = fields_.find(field);
            return found == fields_.end() ? otherwise : std::get<T>(found->second);
        }

        std::map<PreferencesField, PreferencesValue> fields_;
        int told_ = 0;
    };

    explicit RecordingPreferences(Journal& journal) : journal_(journal) {}

    void setLayout(const PreferencesLayout& layout, PreferencesClient& client) override {
        layout_ = layout;
        client_ = &client;
    }
    void show() override { journal_.note("settings"); }
    void show(const std::string& id, PreferencesField field, const PreferencesValue& value) override {
        Control& control = controls_[id];
        control.fields_[field] = value;
        ++control.told_;
    }

    [[nodiscard]] const PreferencesLayout& layout() const { return layout_; }
    [[nodiscard]] const Control& control(const std::string& id) { return controls_[id]; }
    /// Forgets all that it was told.
    void forget() { controls_.clear(); }
    /// Null until the program has laid the window out.
    [[nodiscard]] PreferencesClient* client() const { return client_; }

  private:
    Journal& journal_;
    PreferencesLayout layout_;
    PreferencesClient* client_ = nullptr;
    std::map<std::string, Control> controls_;
};

} // namespace kelpa::desk
