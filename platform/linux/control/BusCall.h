#pragma once

#include "platform/linux/EventLoop.h"
#include "platform/linux/status/SessionBus.h"

namespace kelpa {

/// Whom a call goes to.
struct BusAddress {
    const char* service;
    const char* path;
    const char* interface;
};

inline constexpr BusAddress theBus = {"org.freedesktop.DBus", "/org/freedesktop/DBus",
                                      "org.freedesktop.DBus"};

/// A call that starts no program; null when it cannot be made.
[[nodiscard]] BusMessage makeCall(SessionBus& bus, const BusAddress& to, const char* member);

/// Sends a call before the loop runs for good and waits for its answer, which may be an error; null when none
/// comes within `seconds`, however long bus and receiver hang.
[[nodiscard]] BusMessage ask(EventLoop& loop, SessionBus& bus, const BusMessage& call, double seconds);

} // namespace kelpa
