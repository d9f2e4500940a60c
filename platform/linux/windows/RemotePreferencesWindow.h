#pragma once

#include "platform/linux/windows/RemoteWindowSystem.h"
#include "platform/linux/windows/ShownTexts.h"
#include "platform/ports/PreferencesWindow.h"

#include <memory>
#include <string>

namespace kelpa {

/// The preferences window as the view shows it: one property for what never changes, and some for each
/// control.
class RemotePreferencesWindow final : public PreferencesWindow {
  public:
    /// The window system outlives the window.
    explicit RemotePreferencesWindow(RemoteWindowSystem& windows) : windows_(windows) {}
    ~RemotePreferencesWindow() override;
    RemotePreferencesWindow(const RemotePreferencesWindow&) = delete;
    RemotePreferencesWindow& operator=(const RemotePreferencesWindow&) = delete;

    void setLayout(const PreferencesLayout& layout, PreferencesClient& client) override;
    void show() override;
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
    void set(std::string_view field, const std::string& id, std::string_view value);
    void didAct(const std::string& action, const std::string& value);
    bool didActOnWindow(const std::string& action, const std::string& value);
    bool didActOnControl(const std::string& action, const wire::Message& message);
    void didActOnList(const std::string& action, const wire::Message& message);
    void showAgain(std::string_view field, const std::string& id);

    RemoteWindowSystem& windows_;
    PreferencesClient* client_ = nullptr;
    ShownTexts texts_;
    std::shared_ptr<WindowRecord> record_; ///< null until the window is laid out
};

} // namespace kelpa
