#include "platform/linux/status/WatcherLink.h"

#include <utility>

namespace kelpa {

namespace {

constexpr const char* watcher = "org.kde.StatusNotifierWatcher";
constexpr const char* watcherPath = "/StatusNotifierWatcher";
constexpr const char* ownerRule =
    "type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',"
    "member='NameOwnerChanged',arg0='org.kde.StatusNotifierWatcher'";
constexpr const char* hostRule = "type='signal',sender='org.kde.StatusNotifierWatcher',"
                                 "interface='org.kde.StatusNotifierWatcher',"
                                 "member='StatusNotifierHostRegistered'";
constexpr const char* hostGoneRule = "type='signal',sender='org.kde.StatusNotifierWatcher',"
                                     "interface='org.kde.StatusNotifierWatcher',"
                                     "member='StatusNotifierHostUnregistered'";

} // namespace

WatcherLink::WatcherLink(SessionBus& bus, std::function<void(bool present)> hostChanged)
    : bus_(bus), hostChanged_(std::move(hostChanged)), lost_(bus.whenLost([this] { lose(); })) {}

void WatcherLink::start(const std::string& service) {
    service_ = service;
    match(ownerMatch_, ownerRule, BusHandler<&WatcherLink::ownerChanged>::call);
    match(hostMatch_, hostRule, BusHandler<&WatcherLink::hostsChanged>::call);
    match(hostGoneMatch_, hostGoneRule, BusHandler<&WatcherLink::hostsChanged>::call);
    registerItem();
}

void WatcherLink::stop() {
    for (BusSlot* slot : {&ownerMatch_, &hostMatch_, &hostGoneMatch_, &call_})
        slot->reset();
}

void WatcherLink::match(BusSlot& slot, const char* rule, sd_bus_message_handler_t handler) {
    sd_bus_slot* added = nullptr;
    sd_bus_add_match_async(bus_.handle(), &added, rule, handler, nullptr, this);
    slot.reset(added);
}

/// No question before whether there is a watcher: that the call cannot be delivered is answer enough.
void WatcherLink::registerItem() {
    sd_bus_message* made = nullptr;
    sd_bus_message_new_method_call(bus_.handle(), &made, watcher, watcherPath, watcher,
                                   "RegisterStatusNotifierItem");
    const BusMessage message(made);
    if (!message)
        return setPresent(false);
    sd_bus_message_set_auto_start(made, 0);
    sd_bus_message_append(made, "s", service_.c_str());
    sd_bus_slot* slot = nullptr;
    sd_bus_call_async(bus_.handle(), &slot, made, BusHandler<&WatcherLink::registered>::call, this, 0);
    call_.reset(slot);
}

void WatcherLink::askForHost() {
    sd_bus_slot* slot = nullptr;
    sd_bus_call_method_async(bus_.handle(), &slot, watcher, watcherPath, "org.freedesktop.DBus.Properties",
                             "Get", BusHandler<&WatcherLink::hostAnswered>::call, this, "ss", watcher,
                             "IsStatusNotifierHostRegistered");
    call_.reset(slot);
}

void WatcherLink::setPresent(bool present) {
    if (std::exchange(told_, true) && present_ == present)
        return;
    present_ = present;
    hostChanged_(present);
}

void WatcherLink::lose() {
    call_.reset();
    setPresent(false);
}

void WatcherLink::ownerChanged(sd_bus_message* message) {
    const char *name = nullptr, *before = nullptr, *after = nullptr;
    if (sd_bus_message_read(message, "sss", &name, &before, &after) < 0)
        return;
    if (*after != '\0')
        return registerItem();
    call_.reset();
    setPresent(false);
}

void WatcherLink::registered(sd_bus_message* reply) {
    if (sd_bus_message_is_method_error(reply, nullptr))
        return setPresent(false);
    askForHost();
}

void WatcherLink::hostsChanged(sd_bus_message*) {
    askForHost();
}

/// A watcher that took the item but does not know of hosts shows it itself.
void WatcherLink::hostAnswered(sd_bus_message* reply) {
    int known = 1;
    if (!sd_bus_message_is_method_error(reply, nullptr))
        sd_bus_message_read(reply, "v", "b", &known);
    setPresent(known != 0);
}

} // namespace kelpa
