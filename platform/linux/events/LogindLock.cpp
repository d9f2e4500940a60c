#include "platform/linux/events/LogindLock.h"

namespace kelpa {

namespace {

/// What the edges know this source by.
constexpr const char* sourceName = "logind";

} // namespace

LogindLock::LogindLock(EventLoop& loop, Bus& system, LockEdges& edges)
    : edges_(edges), session_(loop, system, "LockedHint", *this) {}

/// Most desktops never set it, so that only a change says anything.
void LogindLock::propertyRead(bool locked) {
    if (locked == hint_)
        return;
    hint_ = locked;
    edges_.says(sourceName, locked);
}

void LogindLock::propertyLost() {
    hint_ = false;
    edges_.gone(sourceName);
}

void LogindLock::signalled(sd_bus_message* signal) {
    if (sd_bus_message_is_signal(signal, LogindSession::interface, "Lock"))
        edges_.lockRequested();
    else if (sd_bus_message_is_signal(signal, LogindSession::interface, "Unlock"))
        edges_.unlockRequested();
}

} // namespace kelpa
