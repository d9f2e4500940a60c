#include "platform/linux/tray/TrayNotice.h"

#include "platform/linux/bus/Bus.h"
#include "platform/linux/bus/BusMessage.h"

#include <cstring>

namespace kelpa {

namespace {

constexpr BusAddress server = {"org.freedesktop.Notifications", "/org/freedesktop/Notifications",
                               "org.freedesktop.Notifications"};
/// The click on the notification itself, as notifications name it.
constexpr const char* clickAction = "default";
constexpr std::int32_t asLongAsUsual = -1;

int write(sd_bus_message* message, const NoTrayText& text, const TrayNotice::Desktop& desktop) {
    BusWriter writer(message);
    writer.text(desktop.program).natural(0).text(desktop.icon).text(text.summary).text(text.body);
    writer.open('a', "s").text(clickAction).text(text.action).close();
    writer.open('a', "{sv}");
    writeEntry(writer, "desktop-entry", desktop.identifier);
    return writer.close().integer(asLongAsUsual).result();
}

} // namespace

TrayNotice::TrayNotice(EventLoop& loop, Bus& bus, Desktop desktop, double patience)
    : loop_(loop), bus_(bus), desktop_(std::move(desktop)), patience_(patience), joined_(bus.join(*this)) {}

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
    for (BusSlot* slot : {&call_, &clicks_, &closing_})
        slot->reset();
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
    notify(NoTrayText());
}

void TrayNotice::notify(const NoTrayText& text) {
    clicks_ = bus_.match<&TrayNotice::clicked>(signalRule(server, "ActionInvoked"), *this);
    closing_ = bus_.match<&TrayNotice::closed>(signalRule(server, "NotificationClosed"), *this);
    const BusMessage message = bus_.newCall(server, "Notify");
    if (!message || write(message.get(), text, desktop_) < 0)
        return;
    // Many desktops start their notifications when the first one is sent.
    sd_bus_message_set_auto_start(message.get(), 1);
    call_ = bus_.call<&TrayNotice::notified>(message, *this);
}

void TrayNotice::notified(sd_bus_message* reply) {
    if (readFrom(reply, "u", &number_))
        return;
    clicks_.reset();
    closing_.reset();
}

/// Everybody hears of the clicks on all notifications.
void TrayNotice::clicked(sd_bus_message* signal) {
    std::uint32_t number = 0;
    const char* action = nullptr;
    if (readFrom(signal, "us", &number, &action) && number_ != 0 && number == number_ &&
        std::strcmp(action, clickAction) == 0)
        desktop_.openPreferences();
}

/// A server that starts anew gives the number to a notification of somebody else.
void TrayNotice::closed(sd_bus_message* signal) {
    std::uint32_t number = 0;
    if (!readFrom(signal, "u", &number) || number != number_)
        return;
    clicks_.reset();
    closing_.reset();
}

} // namespace kelpa
