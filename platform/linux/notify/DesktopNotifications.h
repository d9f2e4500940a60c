#pragma once

#include "platform/linux/bus/Bus.h"
#include "platform/ports/Notifications.h"

#include <functional>
#include <list>
#include <string>

namespace kelpa {

/// What a notification says of its sender.
struct NotificationSender {
    std::string program;
    std::string identifier; ///< of its desktop entry
    std::string icon;       ///< path of a picture
};

/// One notification at a time of the desktop's service for them, which many desktops start when the first one
/// is sent. While none is shown nothing of the bus is listened to.
class DesktopNotifications final : public Notifications, private BusClient {
  public:
    /// The action that a click on the notification itself means, of which no button is made.
    static constexpr const char* clickAction = "default";

    /// `failed` is told, for the log, why something could not be shown. The bus outlives the object.
    DesktopNotifications(Bus& bus, NotificationSender sender, std::function<void(const std::string&)> failed);
    ~DesktopNotifications() override;
    DesktopNotifications(const DesktopNotifications&) = delete;
    DesktopNotifications& operator=(const DesktopNotifications&) = delete;

    void show(const Notification& notification, std::function<void(const std::string&)> pressed) override;
    void withdraw() override;

  private:
    class Shown;

    void busOpened() override {}
    void busLost() override;
    void forget(const Shown& gone);
    /// Writes the call and gives the first failure, as the bus library numbers them.
    int write(sd_bus_message* message, const Notification& notification) const;

    Bus& bus_;
    NotificationSender sender_;
    std::function<void(const std::string&)> failed_;
    /// The newest one comes last. Those before it were withdrawn before the service had told their number,
    /// and are closed when it does.
    std::list<Shown> shown_;
    Subscription joined_;
};

} // namespace kelpa
