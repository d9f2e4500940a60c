#pragma once

#include "panes/Pane.h"
#include "platform/ports/Services.h"
#include "platform/ports/Timers.h"
#include "prefs/App.h"

#include <map>
#include <memory>
#include <vector>

namespace kelpa {

/// The preferences window: five panes. It hands what a person does to the control that it was done to.
class PreferencesView final : public PreferencesClient {
  public:
    /// Lays the window out, which may be done once in its life. All must outlive the view.
    PreferencesView(PreferencesWindow& window, App& app, Queue& mainQueue, const Services& services);

    /// Shows the window with everything as it is stored now.
    void show();

    void cameToFront() override;
    void closed() override;
    void did(const std::string& id, PreferencesAct act, const PreferencesValue& value) override;
    void showAgain() override { shown_.showAgain(); }

  private:
    [[nodiscard]] PreferencesLayout layout() const;

    PreferencesWindow& window_;
    ShownPreferences shown_;
    std::vector<std::unique_ptr<Pane>> panes_;
    std::map<std::string, PaneControl*> controls_; ///< of all panes, by id
};

} // namespace kelpa
