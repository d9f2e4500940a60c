#include "platform/linux/tray/TrayNotice.h"

namespace kelpa {

TrayNotice::TrayNotice(EventLoop& loop, Bus& bus, Notifications& notifications, Desktop desktop,
                       double patience)
    : loop_(loop), bus_(bus), notifications_(notifications), desktop_(std::move(desktop)),
      patience_(patience), joined_(bus.join(*this)) {}

void TrayNotice::setHostPresent(bool present) {
    missed_ = !present;
    if (present)
        waiting_.cancel();
    else if (!waiting_.active())
        wait();
}

void TrayNotice::busOpened() {
    if (missed_)
        wait();
}

void TrayNotice::busLost() {
    waiting_.cancel();
}

/// Without a bus nothing can be shown.
void TrayNotice::wait() {
    if (!shown_ && bus_.open())
        waiting_ = loop_.afterReal(patience_, [this] { decide(); });
}

void TrayNotice::decide() {
    waiting_.cancel();
    if (desktop_.oldTrayThere() || desktop_.screenLocked())
        return;
    shown_ = true;
    desktop_.nothingShows();
    const NoTrayText text;
    notifications_.show({text.summary, text.body, {{notificationClick, text.action}}, 0},
                        [this](const std::string& action) {
                            if (action == notificationClick)
                                desktop_.openPreferences();
                        });
}

} // namespace kelpa
