#pragma once

#include "platform/linux/EventLoop.h"
#include "platform/linux/bus/Bus.h"
#include "platform/linux/notify/DesktopNotifications.h"
#include "ui/StatusBarController.h"

#include <functional>
#include <string>

namespace kelpa {

/// Tells a person once in a run that nothing on this desktop shows the program, by a notification whose click
/// opens the preferences. At log-in panels come up after the programs, so it waits first, and again when the
/// bus comes back, which takes every panel with it. A panel that goes while the screen is locked, as GNOME
/// takes its own away, says nothing of the desktop. Where nothing shows notifications either, nothing comes
/// of it.
class TrayNotice final : private BusClient {
  public:
    static constexpr double usualPatience = 15; ///< real seconds without a tray

    struct Desktop {
        std::function<bool()> oldTrayThere; ///< whether the item is shown without the bus
        std::function<bool()> screenLocked;
        std::function<void()> nothingShows; ///< for the log
        std::function<void()> openPreferences;
    };

    /// Loop, bus and notifications, which nobody else uses, outlive the notice, which begins with what
    /// `setHostPresent` says.
    TrayNotice(EventLoop& loop, Bus& bus, Notifications& notifications, Desktop desktop,
               double patience = usualPatience);

    /// Whether something on the bus shows the item now.
    void setHostPresent(bool present);

  private:
    void busOpened() override;
    void busLost() override;
    void wait();
    void decide();

    EventLoop& loop_;
    Bus& bus_;
    Notifications& notifications_;
    Desktop desktop_;
    double patience_;
    bool missed_ = false; ///< nothing shows the item
    bool shown_ = false;
    Subscription waiting_;
    Subscription joined_;
};

} // namespace kelpa
