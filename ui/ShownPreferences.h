#pragma once

#include "platform/ports/PreferencesWindow.h"

#include <map>
#include <optional>
#include <utility>

namespace kelpa {

/// A preferences window that is told only what it does not show yet, so that everything can be shown again at
/// no cost whenever it may have changed.
class ShownPreferences final : public PreferencesWindow {
  public:
    /// The window must outlive this one.
    explicit ShownPreferences(PreferencesWindow& window) : window_(window) {}

    /// A person was at the control: what it shows is not known any more.
    void forget(const std::string& id) { shown_.erase(id); }

    void setLayout(const PreferencesLayout& layout, PreferencesClient& client) override;
    void show() override { window_.show(); }
    void setCopyright(const std::string& line) override;
    void setSwitch(const std::string& id, bool on) override;
    void setText(const std::string& id, const std::string& text) override;
    void setChoices(const std::string& id, const std::vector<PreferencesChoice>& choices) override;
    void setChosen(const std::string& id, std::int64_t value) override;
    void setTimeOfDay(const std::string& id, int hour, int minute) override;
    void setTimePoints(const std::string& id, const std::vector<TimePoint>& points) override;
    void setPrompts(const std::string& id, const std::vector<std::string>& prompts) override;
    void setHint(const std::string& id, const std::string& hint) override;
    void setProblem(const std::string& id, const std::string& problem) override;
    void setEnabled(const std::string& id, bool enabled) override;
    void setVisible(const std::string& id, bool visible) override;

  private:
    /// What a control was told last; nothing where it was not told yet.
    struct Shown {
        std::optional<bool> on;
        std::optional<std::string> text;
        std::optional<std::vector<PreferencesChoice>> choices;
        std::optional<std::int64_t> chosen;
        std::optional<std::pair<int, int>> time;
        std::optional<std::vector<TimePoint>> points;
        std::optional<std::vector<std::string>> prompts;
        std::optional<std::string> hint;
        std::optional<std::string> problem;
        std::optional<bool> enabled;
        std::optional<bool> visible;
    };

    PreferencesWindow& window_;
    std::map<std::string, Shown> shown_;
    std::optional<std::string> copyright_;
};

} // namespace kelpa
