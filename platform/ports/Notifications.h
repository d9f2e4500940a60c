#pragma once

#include <functional>
#include <string>
#include <vector>

namespace kelpa {

/// A button of a notification.
struct NotificationAction {
    std::string id; ///< by which a press is told; not shown
    std::string label;
    bool operator==(const NotificationAction&) const = default;
};

/// A notification, with texts that are ready to show.
struct Notification {
    std::string title;
    std::string body;
    std::vector<NotificationAction> actions;
    double seconds = 0; ///< real ones, for which it is to stay, where the desktop lets programs say that
};

/// The desktop's notifications, of which the program has one at a time.
class Notifications {
  public:
    virtual ~Notifications() = default;
    /// Shows the notification in the place of the last one. `pressed` is told the id of an action that a
    /// person chose of it, on the main thread and never inside the call, until it is withdrawn or replaced.
    /// Where no service shows notifications, or it answers with an error, nothing comes of it but a line in
    /// the log.
    virtual void show(const Notification& notification,
                      std::function<void(const std::string& id)> pressed) = 0;
    /// Takes the notification away. Does nothing where none is shown.
    virtual void withdraw() = 0;
};

} // namespace kelpa
