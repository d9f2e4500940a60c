#pragma once

#include "platform/linux/bus/Bus.h"
#include "platform/ports/Notifications.h"

#include <functional>
#include <memory>
#include <string>

namespace kelpa {

/// What a notification says of its sender.
struct NotificationSender {
    std::string program;
    std::string identifier; ///< of its desktop entry
    std::string icon;       ///< path of a picture
};

/// The action that a click on the notification itself means, of which no button is made.
inline constexpr const char* notificationClick = "default";

/// One notification at a time of the desktop's service for them, which many desktops start when the first one
/// is sent. While none is shown nothing of the bus is listened to. `failed` is told, for the log, why
/// something could not be shown. The bus outlives the object.
[[nodiscard]] std::unique_ptr<Notifications>
makeDesktopNotifications(Bus& bus, NotificationSender sender, std::function<void(const std::string&)> failed);

} // namespace kelpa
