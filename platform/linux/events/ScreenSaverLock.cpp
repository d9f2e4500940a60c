#include "platform/linux/events/ScreenSaverLock.h"

#include <algorithm>
#include <memory>

namespace kelpa {

namespace {

/// Names, and interfaces of the same name, on an object whose path is made of it.
constexpr std::array<const char*, 5> savers = {"org.freedesktop.ScreenSaver", "org.gnome.ScreenSaver",
                                               "org.mate.ScreenSaver", "org.cinnamon.ScreenSaver",
                                               "org.xfce.ScreenSaver"};

std::string pathOf(std::string name) {
    std::replace(name.begin(), name.end(), '.', '/');
    return "/" + name;
}

} // namespace

ScreenSaverLock::ScreenSaverLock(EventLoop& loop, LockEdges& edges)
    : edges_(edges),
      link_(
          loop, BusLink::Kind::Session, [this](SessionBus& bus) { opened(bus); }, [this] { lost(); }) {
    static_assert(savers.size() == kinds);
}

void ScreenSaverLock::opened(SessionBus& bus) {
    bus_ = bus.handle();
    for (std::size_t kind = 0; kind < kinds; ++kind) {
        matches_[kind] =
            match("type='signal',member='ActiveChanged',interface='" + std::string(savers[kind]) + "'",
                  BusHandler<&ScreenSaverLock::changed>::call);
        ask(kind);
    }
}

void ScreenSaverLock::lost() {
    bus_ = nullptr;
    for (std::size_t kind = 0; kind < kinds; ++kind) {
        matches_[kind].reset();
        questions_[kind].reset();
    }
    while (!locked_.empty()) {
        const std::string sender = locked_.begin()->first;
        locked_.erase(locked_.begin());
        edges_.gone(sender);
    }
}

BusSlot ScreenSaverLock::match(const std::string& rule, sd_bus_message_handler_t handler) {
    sd_bus_slot* slot = nullptr;
    sd_bus_add_match_async(bus_, &slot, rule.c_str(), handler, nullptr, this);
    return BusSlot(slot);
}

/// A screen that was locked before we could hear of it. No screen saver is started for the question.
void ScreenSaverLock::ask(std::size_t kind) {
    sd_bus_message* call = nullptr;
    sd_bus_message_new_method_call(bus_, &call, savers[kind], pathOf(savers[kind]).c_str(), savers[kind],
                                   "GetActive");
    const BusMessage owned(call);
    if (!owned)
        return;
    sd_bus_message_set_auto_start(call, 0);
    sd_bus_slot* slot = nullptr;
    sd_bus_call_async(bus_, &slot, call, BusHandler<&ScreenSaverLock::answered>::call, this, 0);
    questions_[kind].reset(slot);
}

void ScreenSaverLock::changed(sd_bus_message* signal) {
    int active = 0;
    const char* sender = sd_bus_message_get_sender(signal);
    if (sender != nullptr && sd_bus_message_read(signal, "b", &active) >= 0)
        says(sender, active != 0);
}

/// Only news counts: that a screen saver is not active has been so all the time.
void ScreenSaverLock::answered(sd_bus_message* reply) {
    int active = 0;
    const char* sender = sd_bus_message_get_sender(reply);
    if (sd_bus_message_is_method_error(reply, nullptr) || sender == nullptr)
        return;
    if (sd_bus_message_read(reply, "b", &active) >= 0 && active != 0)
        says(sender, true);
}

void ScreenSaverLock::says(const std::string& sender, bool locked) {
    if (!locked)
        locked_.erase(sender);
    else if (!locked_.contains(sender))
        locked_[sender] =
            match("type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',"
                  "member='NameOwnerChanged',arg0='" +
                      sender + "'",
                  BusHandler<&ScreenSaverLock::ownerChanged>::call);
    edges_.says(sender, locked);
}

void ScreenSaverLock::ownerChanged(sd_bus_message* signal) {
    const char *name = nullptr, *before = nullptr, *after = nullptr;
    if (sd_bus_message_read(signal, "sss", &name, &before, &after) < 0 || *after != '\0')
        return;
    const std::string sender = name;
    locked_.erase(sender);
    edges_.gone(sender);
}

} // namespace kelpa
