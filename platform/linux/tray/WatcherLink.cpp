#include "platform/linux/tray/WatcherLink.h"

#include "platform/linux/bus/BusCall.h"

#include <utility>

namespace kelpa {

namespace {

constexpr BusAddress watcher = {"org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher",
                                "org.kde.StatusNotifierWatcher"};
constexpr const char* hostRule = "type='signal',sender='org.kde.StatusNotifierWatcher',"
                                 "interface='org.kde.StatusNotifierWatcher',"
                                 "member='StatusNotifierHostRegistered'";
constexpr const char* hostGoneRule = "type='signal',sender='org.kde.StatusNotifierWatcher',"
                                     "interface='org.kde.StatusNotifierWatcher',"
                                     "member='StatusNotifierHostUnregistered'";

} // namespace

WatcherLink::WatcherLink(Bus& bus, std::function<void(bool present)> hostChanged)
    : bus_(bus), hostChanged_(std::move(hostChanged)) {}

void WatcherLink::start(const std::string& service) {
    service_ = service;
    owner_.emplace(bus_, watcher.service, [this](bool there) { ownerChanged(there); });
    hostMatch_ = bus_.match(hostRule, BusHandler<&WatcherLink::hostsChanged>::call, this);
    hostGoneMatch_ = bus_.match(hostGoneRule, BusHandler<&WatcherLink::hostsChanged>::call, this);
    registerItem();
}

void WatcherLink::stop() {
    owner_.reset();
    for (BusSlot* slot : {&hostMatch_, &hostGoneMatch_, &call_})
        slot->reset();
}

void WatcherLink::lose() {
    stop();
    setPresent(false);
}

void WatcherLink::registerItem() {
    const BusMessage message = makeCall(bus_, watcher, "RegisterStatusNotifierItem");
    if (message)
        sd_bus_message_append(message.get(), "s", service_.c_str());
    call_ = bus_.call(message, BusHandler<&WatcherLink::registered>::call, this);
}

void WatcherLink::askForHost() {
    const BusMessage message =
        makeCall(bus_, {watcher.service, watcher.path, "org.freedesktop.DBus.Properties"}, "Get");
    if (message)
        sd_bus_message_append(message.get(), "ss", watcher.interface, "IsStatusNotifierHostRegistered");
    call_ = bus_.call(message, BusHandler<&WatcherLink::hostAnswered>::call, this);
}

void WatcherLink::setPresent(bool present) {
    if (std::exchange(told_, true) && present_ == present)
        return;
    present_ = present;
    hostChanged_(present);
}

void WatcherLink::ownerChanged(bool there) {
    if (there)
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
