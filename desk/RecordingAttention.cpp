#include "desk/RecordingAttention.h"

#include <algorithm>
#include <cmath>

namespace kelpa::desk {

void RecordingNotifications::show(const Notification& notification,
                                  std::function<void(const std::string&)> pressed) {
    std::string text = inQuotes(notification.title) + " " + inQuotes(notification.body) + " " +
                       std::to_string(std::llround(notification.seconds));
    for (const NotificationAction& action : notification.actions)
        text += " " + action.id + " " + inQuotes(action.label);
    journal_.note("notification", text);
    shown_ = true;
    actions_ = notification.actions;
    pressed_ = std::move(pressed);
}

void RecordingNotifications::withdraw() {
    if (shown_)
        journal_.note("notification", "withdrawn");
    shown_ = false;
}

bool RecordingNotifications::press(const std::string& id) {
    const auto named = [&](const NotificationAction& action) { return action.id == id; };
    if (!shown_ || std::none_of(actions_.begin(), actions_.end(), named))
        return false;
    // Whoever is told may replace what tells.
    const auto told = pressed_;
    told(id);
    return true;
}

Subscription ScriptedBusyness::ask(const std::set<BusyReason>& reasons, Answer answer) {
    std::string text = "asked";
    for (const BusyReason reason : reasons)
        text.append(" ").append(nameOf(reason));
    journal_.note("busy", text);
    auto item =
        std::make_shared<WorkItem>([this, reasons, answer = std::move(answer)] { answer(first(reasons)); });
    if (seconds)
        time_.asyncAfter(*seconds, item);
    return Subscription([this, item] {
        if (item->pending())
            journal_.note("busy", "given up");
        item->cancel();
    });
}

std::optional<BusyReason> ScriptedBusyness::first(const std::set<BusyReason>& reasons) const {
    for (const BusyReason reason : reasons)
        if (holds.count(reason) > 0)
            return reason;
    return std::nullopt;
}

std::optional<std::string> ScriptedBusyness::unavailable(BusyReason reason) {
    const auto found = unavailableFor.find(reason);
    return found == unavailableFor.end() ? std::nullopt : std::optional(found->second);
}

} // namespace kelpa::desk
