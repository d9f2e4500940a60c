#include "platform/linux/events/ScreenSaverLock.h"

#include "platform/linux/bus/Bus.h"

#include <algorithm>

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

ScreenSaverLock::ScreenSaverLock(Bus& bus, LockEdges& edges) : bus_(bus), edges_(edges) {
    static_assert(savers.size() == kinds);
}

void ScreenSaverLock::busOpened() {
    for (std::size_t kind = 0; kind < kinds; ++kind) {
        matches_[kind] = bus_.match<&ScreenSaverLock::changed>(
            signalRule({nullptr, nullptr, savers[kind]}, "ActiveChanged"), *this);
        ask(kind);
    }
}

void ScreenSaverLock::busLost() {
    for (std::size_t kind = 0; kind < kinds; ++kind) {
        matches_[kind].reset();
        questions_[kind].reset();
    }
    while (!locked_.empty())
        gone(std::string(locked_.begin()->first));
}

/// A screen that was locked before we could hear of it. No screen saver is started for the question.
void ScreenSaverLock::ask(std::size_t kind) {
    const std::string path = pathOf(savers[kind]);
    questions_[kind] = bus_.call<&ScreenSaverLock::answered>(
        bus_.newCall({savers[kind], path.c_str(), savers[kind]}, "GetActive"), *this);
}

void ScreenSaverLock::changed(sd_bus_message* signal) {
    int active = 0;
    const char* sender = sd_bus_message_get_sender(signal);
    if (sender != nullptr && readFrom(signal, "b", &active))
        says(sender, active != 0);
}

/// Only news counts: that a screen saver is not active has been so all the time.
void ScreenSaverLock::answered(sd_bus_message* reply) {
    int active = 0;
    const char* sender = sd_bus_message_get_sender(reply);
    if (sender != nullptr && readFrom(reply, "b", &active) && active != 0)
        says(sender, true);
}

void ScreenSaverLock::says(const std::string& sender, bool locked) {
    if (!locked)
        locked_.erase(sender);
    else
        locked_.try_emplace(sender, bus_, sender, [this, sender](bool there) {
            if (!there)
                gone(sender);
        });
    edges_.says(sender, locked);
}

void ScreenSaverLock::gone(const std::string& sender) {
    locked_.erase(sender);
    edges_.gone(sender);
}

} // namespace kelpa
