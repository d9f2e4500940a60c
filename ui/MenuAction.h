#pragma once

#include "platform/ports/Services.h"
#include "prefs/App.h"

namespace kelpa {

/// What the lines of the status menu do.
class MenuAction {
  public:
    MenuAction(App& app, ApplicationLoop& application, const Services& services)
        : app_(app), application_(application), services_(services) {}

    void didClickPause() const;
    void didClickWater() const;
    void didClickSettings() const;
    void didClickUpdates() const;
    void didClickFeedback() const;
    void didClickAbout() const;
    void didClickQuit() const;

  private:
    App& app_;
    ApplicationLoop& application_;
    Services services_;
};

} // namespace kelpa
