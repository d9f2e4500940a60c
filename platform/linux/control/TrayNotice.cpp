#include "platform/linux/control/TrayNotice.h"

#include "platform/linux/control/BusValues.h"

#include <cstring>

namespace kelpa {

namespace {

constexpr const char* service = "org.freedesktop.Notifications";
constexpr const char* path = "/org/freedesktop/Notifications";
/// The click on the notification itself, as notifications name it.
constexpr const char* clickAction = "default";
constexpr std::int32_t asLongAsUsual = -1;

void match(SessionBus& bus, BusSlot& slot, const char* member, sd_bus_message_handler_t handler, void* self) {
    sd_bus_slot* added = nullptr;
    sd_bus_match_signal_async(bus.handle(), &added, service, path, service, member, handler, nullptr, self);
    slot.reset(added);
}

int write(sd_bus_message* message, const NoTrayText& text, const NotifyingProgram& program) {
    BusWriter writer(message);
    writer.text(program.name).natural(0).text(program.icon).text(text.summary).text(text.body);
    writer.open('a', "s").text(clickAction).text(text.action).close();
    writer.open('a', "{sv}");
    writeEntry(writer, "desktop-entry", program.identifier);
    return writer.close().integer(asLongAsUsual).result();
}

} // namespace

TrayNotice::TrayNotice(EventLoop& loop, Desktop desktop, double patience)
    : loop_(loop), desktop_(std::move(desktop)), patience_(patience) {}

void TrayNotice::setHostPresent(bool present, SessionBus* bus) {
    bus_ = bus;
    if (present)
        waiting_.cancel();
    else if (!told_ && !waiting_.active())
        waiting_ = loop_.afterReal(patience_, [this] { decide(); });
}

void TrayNotice::decide() {
    waiting_.cancel();
    if (desktop_.oldTrayThere() || desktop_.screenLocked())
        return;
    told_ = true;
    desktop_.nothingShows();
    if (bus_ != nullptr)
        notify(noTrayText());
}

void TrayNotice::notify(const NoTrayText& text) {
    match(*bus_, clicks_, "ActionInvoked", BusHandler<&TrayNotice::clicked>::call, this);
    match(*bus_, closing_, "NotificationClosed", BusHandler<&TrayNotice::closed>::call, this);
    sd_bus_message* made = nullptr;
    sd_bus_message_new_method_call(bus_->handle(), &made, service, path, service, "Notify");
    const BusMessage message(made);
    if (!message || write(made, text, desktop_.program) < 0)
        return;
    sd_bus_slot* slot = nullptr;
    sd_bus_call_async(bus_->handle(), &slot, made, BusHandler<&TrayNotice::notified>::call, this, 0);
    call_.reset(slot);
}

void TrayNotice::notified(sd_bus_message* reply) {
    if (!sd_bus_message_is_method_error(reply, nullptr) && sd_bus_message_read(reply, "u", &number_) >= 0)
        return;
    clicks_.reset();
    closing_.reset();
}

/// Everybody hears of the clicks on all notifications.
void TrayNotice::clicked(sd_bus_message* signal) {
    std::uint32_t number = 0;
    const char* action = nullptr;
    if (sd_bus_message_read(signal, "us", &number, &action) >= 0 && number_ != 0 && number == number_ &&
        std::strcmp(action, clickAction) == 0)
        desktop_.openPreferences();
}

/// A server that starts anew gives the number to a notification of somebody else.
void TrayNotice::closed(sd_bus_message* signal) {
    std::uint32_t number = 0;
    if (sd_bus_message_read(signal, "u", &number) < 0 || number != number_)
        return;
    clicks_.reset();
    closing_.reset();
}

} // namespace kelpa
