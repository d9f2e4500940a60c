#include "platform/linux/tray/WatcherLink.h"

#include "platform/linux/bus/Bus.h"

#include <utility>

namespace kelpa {

namespace {

constexpr BusAddress watcher = {"org.kde.StatusNotifierWatcher", "/StatusNotifierWatcher",
                                "org.kde.StatusNotifierWatcher"};

std::string hostRule(const char* signal) {
    return signalRule({watcher.service, nullptr, watcher.interface}, signal);
}

} // namespace

WatcherLink::WatcherLink(Bus& bus, std::function<void(bool present)> hostChanged)
    : bus_(bus), hostChanged_(std::move(hostChanged)) {}

void WatcherLink::start(const std::string& service) {
    service_ = service;
    owner_.emplace(bus_, watcher.service, [this](bool there) { ownerChanged(there); });
    hostCame_ = bus_.match<&WatcherLink::askForHost>(hostRule("StatusNotifierHostRegistered"), *this);
    hostWent_ = bus_.match<&WatcherLink::askForHost>(hostRule("StatusNotifierHostUnregistered"), *this);
    registerItem();
}

void WatcherLink::stop() {
    owner_.reset();
    for (BusSlot* slot : {&hostCame_, &hostWent_, &call_})
        slot->reset();
}

void WatcherLink::lose() {
    stop();
    setPresent(false);
}

void WatcherLink::registerItem() {
    call_ = bus_.call<&WatcherLink::registered>(
        bus_.newCall(watcher, "RegisterStatusNotifierItem", "s", service_.c_str()), *this);
}

void WatcherLink::askForHost(sd_bus_message*) {
    call_ = bus_.call<&WatcherLink::hostAnswered>(bus_.newQuestion(watcher, "IsStatusNotifierHostRegistered"),
                                                  *this);
}

void WatcherLink::setPresent(bool present) {
    if (std::exchange(present_, present) != present)
        hostChanged_(present);
}

void WatcherLink::ownerChanged(bool there) {
    if (there)
        return registerItem();
    call_.reset();
    setPresent(false);
}

void WatcherLink::registered(sd_bus_message* reply) {
    if (isGood(reply))
        askForHost(reply);
    else
        setPresent(false);
}

/// A watcher that took the item but does not know of hosts shows it itself.
void WatcherLink::hostAnswered(sd_bus_message* reply) {
    int known = 1;
    readFrom(reply, "v", "b", &known);
    setPresent(known != 0);
}

} // namespace kelpa
