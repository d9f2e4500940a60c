#include "platform/linux/events/DesktopLock.h"

#include <algorithm>
#include <utility>

namespace kelpa {

namespace {

/// Names, and interfaces of the same name, on an object whose path is made of it.
constexpr const char* screenSavers[] = {"org.freedesktop.ScreenSaver", "org.gnome.ScreenSaver",
                                        "org.mate.ScreenSaver", "org.cinnamon.ScreenSaver",
                                        "org.xfce.ScreenSaver"};
/// What the edges know logind by.
constexpr const char* logindName = "logind";
constexpr const char* x11Name = "xscreensaver";

std::string pathOf(std::string name) {
    std::replace(name.begin(), name.end(), '.', '/');
    return "/" + name;
}

} // namespace

void LockEdges::says(const std::string& source, bool locked) {
    if (locked)
        sayLocked_.insert(source);
    else
        sayLocked_.erase(source);
    screen_.become(locked);
}

void LockEdges::lockRequested() {
    if (!sayLocked_.empty())
        screen_.become(true);
}

void LockEdges::gone(const std::string& source) {
    if (sayLocked_.erase(source) > 0 && sayLocked_.empty())
        screen_.become(false);
}

DesktopLock::DesktopLock(EventLoop& loop, Bus& session, Bus& system, X11Connection* x11)
    : edges_([this] { locked_(); }, [this] { unlocked_(); }), loop_(loop), bus_(session), system_(system),
      x11_(x11) {}

/// The screen may have been locked before we could hear of it, so each is asked. No screen saver is started
/// for the question.
void DesktopLock::busOpened() {
    for (const char* saver : screenSavers) {
        const std::string path = pathOf(saver);
        slots_.push_back(bus_.match<&DesktopLock::saverChanged>(
            signalRule({nullptr, nullptr, saver}, "ActiveChanged"), *this));
        slots_.push_back(bus_.call<&DesktopLock::saverAnswered>(
            bus_.newCall({saver, path.c_str(), saver}, "GetActive"), *this));
    }
}

void DesktopLock::busLost() {
    slots_.clear();
    while (!lockedSavers_.empty())
        saverGone(std::string(lockedSavers_.begin()->first));
}

void DesktopLock::saverChanged(sd_bus_message* signal) {
    int active = 0;
    const char* sender = sd_bus_message_get_sender(signal);
    if (sender != nullptr && readFrom(signal, "b", &active))
        saverSays(sender, active != 0);
}

/// Only news counts: that a screen saver is not active has been so all the time.
void DesktopLock::saverAnswered(sd_bus_message* reply) {
    int active = 0;
    const char* sender = sd_bus_message_get_sender(reply);
    if (sender != nullptr && readFrom(reply, "b", &active) && active != 0)
        saverSays(sender, true);
}

void DesktopLock::saverSays(const std::string& sender, bool locked) {
    if (!locked)
        lockedSavers_.erase(sender);
    else
        lockedSavers_.try_emplace(sender, bus_, sender, [this, sender](bool there) {
            if (!there)
                saverGone(sender);
        });
    edges_.says(sender, locked);
}

void DesktopLock::saverGone(const std::string& sender) {
    lockedSavers_.erase(sender);
    edges_.gone(sender);
}

/// Most desktops never set it, so that only a change says anything.
void DesktopLock::propertyRead(bool locked) {
    if (std::exchange(hint_, locked) != locked)
        edges_.says(logindName, locked);
}

void DesktopLock::propertyLost() {
    hint_ = false;
    edges_.gone(logindName);
}

void DesktopLock::signalled(sd_bus_message* signal) {
    if (sd_bus_message_is_signal(signal, logindSession, "Lock") > 0)
        edges_.lockRequested();
    else if (sd_bus_message_is_signal(signal, logindSession, "Unlock") > 0)
        edges_.unlockRequested();
}

void DesktopLock::observe(std::function<void()> locked, std::function<void()> unlocked) {
    locked_ = std::move(locked);
    unlocked_ = std::move(unlocked);
    joined_ = bus_.join(*this);
    logind_ = followLogindSession(loop_, system_, "LockedHint", *this);
    if (x11_ != nullptr)
        x11Lock_ = watchX11Lock(
            *x11_, [this](bool isLocked) { edges_.says(x11Name, isLocked); },
            [this] { edges_.gone(x11Name); });
}

} // namespace kelpa
