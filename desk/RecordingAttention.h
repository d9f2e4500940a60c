#pragma once

#include "desk/Journal.h"
#include "desk/VirtualTime.h"
#include "platform/ports/Busy.h"
#include "platform/ports/Notifications.h"

#include <map>

namespace kelpa::desk {

/// Notes what is shown and taken away; a script presses the actions.
class RecordingNotifications final : public Notifications {
  public:
    explicit RecordingNotifications(Journal& journal) : journal_(journal) {}

    void show(const Notification& notification, std::function<void(const std::string&)> pressed) override;
    void withdraw() override;

    /// Presses an action; false where none of that name is shown.
    bool press(const std::string& id);
    /// Who was told of presses last, also when that notification has gone: of a press that comes late.
    [[nodiscard]] const std::function<void(const std::string&)>& listener() const { return pressed_; }
    [[nodiscard]] bool shown() const { return shown_; }

  private:
    Journal& journal_;
    bool shown_ = false;
    std::vector<NotificationAction> actions_;
    std::function<void(const std::string&)> pressed_;
};

/// Somebody who is busy, or not, as a script says.
class ScriptedBusyness final : public BusyProbe {
  public:
    ScriptedBusyness(Journal& journal, VirtualTime& time) : journal_(journal), time_(time) {}

    Subscription ask(const std::set<BusyReason>& reasons, Answer answer) override;
    [[nodiscard]] std::optional<std::string> unavailable(BusyReason reason) override;

    std::set<BusyReason> holds;          ///< what holds now
    std::optional<double> seconds = 0.0; ///< until the answer comes; nothing for never
    std::map<BusyReason, std::string> unavailableFor;

  private:
    [[nodiscard]] std::optional<BusyReason> first(const std::set<BusyReason>& reasons) const;

    Journal& journal_;
    VirtualTime& time_;
};

} // namespace kelpa::desk
