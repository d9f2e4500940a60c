#pragma once

#include "platform/ports/Services.h"
#include "ui/UiClient.h"

namespace kelpa {

/// What the lines of the status menu do.
class MenuAction {
  public:
    MenuAction(UiClient& client, ApplicationLoop& application, const Services& services)
        : client_(client), application_(application), services_(services) {}

    void didClickPause() const;
    void didClickWater() const;
    void didClickSettings() const;
    void didClickUpdates() const;
    void didClickFeedback() const;
    void didClickAbout() const;
    void didClickQuit() const;

  private:
    UiClient& client_;
    ApplicationLoop& application_;
    Services services_;
};

} // namespace kelpa
