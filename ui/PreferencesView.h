#pragma once

#include "panes/Pane.h"
#include "platform/ports/Timers.h"
#include "prefs/App.h"
#include "ui/ShownPreferences.h"

#include <functional>
#include <map>
#include <memory>
#include <vector>

namespace kelpa {

/// The preferences window: five panes. It hands what a person does to the control that it was done to.
class PreferencesView final : public PreferencesClient {
  public:
    /// Lays the window out, which may be done once in its life. All must outlive the view.
    PreferencesView(PreferencesWindow& window, App& app, Queue& mainQueue);

    /// Shows the window with everything as it is stored now.
    void show();

    void cameToFront() override;
    void closed() override;
    void switched(const std::string& id, bool on) override;
    void typed(const std::string& id, const std::string& text) override;
    void entered(const std::string& id, const std::string& text) override;
    void stepped(const std::string& id, int direction) override;
    void chosen(const std::string& id, std::int64_t value) override;
    void timeEntered(const std::string& id, int hour, int minute) override;
    void timePointAdded(const std::string& id, int hour, int minute) override;
    void timePointRemoved(const std::string& id, int hour, int minute) override;
    void promptAdded(const std::string& id, const std::string& text) override;
    void promptEdited(const std::string& id, const std::string& old, const std::string& text) override;
    void promptDeleted(const std::string& id, const std::string& text) override;
    void promptsReset(const std::string& id) override;

  private:
    [[nodiscard]] PreferencesLayout layout() const;
    /// Null, with a line in the log, for a control that there is not.
    [[nodiscard]] PaneControl* touched(const std::string& id);
    void act(const std::string& id, const std::function<void(PaneControl&)>& deed);

    ShownPreferences window_;
    std::vector<std::unique_ptr<Pane>> panes_;
    std::map<std::string, PaneControl*> controls_; ///< of all panes, by id
};

} // namespace kelpa
