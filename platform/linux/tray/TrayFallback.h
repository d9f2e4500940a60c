#pragma once

#include "platform/linux/EventLoop.h"
#include "platform/linux/tray/LinuxStatusBar.h"

namespace kelpa {

/// Shows the item in another way where nothing on the bus shows it. Waits a little with that, because at the
/// start of a session panels come up after the programs, and one that restarts is soon back.
class TrayFallback {
  public:
    static constexpr double patience = 2; ///< real seconds

    /// All arguments outlive the fallback; it begins with what `setHostPresent` says.
    TrayFallback(EventLoop& loop, LinuxStatusBar& statusBar, StatusItemSink& sink)
        : loop_(loop), statusBar_(statusBar), sink_(sink) {}

    /// Whether something on the bus shows the item now.
    void setHostPresent(bool present);

  private:
    EventLoop& loop_;
    LinuxStatusBar& statusBar_;
    StatusItemSink& sink_;
    Subscription waiting_;
};

} // namespace kelpa
