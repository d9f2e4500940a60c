#pragma once

#include "desk/Journal.h"
#include "platform/ports/PreferencesWindow.h"

#include <map>

namespace kelpa::desk {

/// A preferences window that keeps what it was told last, for a script or a test to look at and act on.
class RecordingPreferences final : public PreferencesWindow {
  public:
    struct Control {
        bool on = false;
        std::string text;
        std::vector<PreferencesChoice> choices;
        std::int64_t chosen = -1;
        TimePoint time;
        std::vector<TimePoint> points;
        std::vector<std::string> prompts;
        std::string hint;
        std::string problem;
        bool enabled = true;
        bool visible = true;
        int told = 0; ///< how often it was told anything
    };

    explicit RecordingPreferences(Journal& journal) : journal_(journal) {}

    void setLayout(const PreferencesLayout& layout, PreferencesClient& client) override {
        layout_ = layout;
        client_ = &client;
    }
    void show() override { journal_.note("settings"); }
    void setCopyright(const std::string& line) override { copyright_ = line; }
    void setSwitch(const std::string& id, bool on) override { tell(id).on = on; }
    void setText(const std::string& id, const std::string& text) override { tell(id).text = text; }
    void setChoices(const std::string& id, const std::vector<PreferencesChoice>& choices) override {
        tell(id).choices = choices;
    }
    void setChosen(const std::string& id, std::int64_t value) override { tell(id).chosen = value; }
    void setTimeOfDay(const std::string& id, int hour, int minute) override {
        tell(id).time = {hour, minute, {}, {}};
    }
    void setTimePoints(const std::string& id, const std::vector<TimePoint>& points) override {
        tell(id).points = points;
    }
    void setPrompts(const std::string& id, const std::vector<std::string>& prompts) override {
        tell(id).prompts = prompts;
    }
    void setHint(const std::string& id, const std::string& hint) override { tell(id).hint = hint; }
    void setProblem(const std::string& id, const std::string& problem) override {
        tell(id).problem = problem;
    }
    void setEnabled(const std::string& id, bool enabled) override { tell(id).enabled = enabled; }
    void setVisible(const std::string& id, bool visible) override { tell(id).visible = visible; }

    [[nodiscard]] const PreferencesLayout& layout() const { return layout_; }
    [[nodiscard]] const std::string& copyright() const { return copyright_; }
    [[nodiscard]] const Control& control(const std::string& id) { return controls_[id]; }
    /// Null until the program has laid the window out.
    [[nodiscard]] PreferencesClient* client() const { return client_; }

  private:
    Control& tell(const std::string& id) {
        ++controls_[id].told;
        return controls_[id];
    }

    Journal& journal_;
    PreferencesLayout layout_;
    std::string copyright_;
    PreferencesClient* client_ = nullptr;
    std::map<std::string, Control> controls_;
};

} // namespace kelpa::desk
