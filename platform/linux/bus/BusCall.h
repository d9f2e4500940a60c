#pragma once

#include "platform/linux/bus/Bus.h"

namespace kelpa {

/// Whom a call goes to.
struct BusAddress {
    const char* service;
    const char* path;
    const char* interface;
};

inline constexpr BusAddress theBus = {"org.freedesktop.DBus", "/org/freedesktop/DBus",
                                      "org.freedesktop.DBus"};

/// A call that starts no program; null when it cannot be made, as while the bus is not open.
[[nodiscard]] BusMessage makeCall(const Bus& bus, const BusAddress& to, const char* member);

/// Sends a call before the loop runs for good and waits for its answer, which may be an error; null when none
/// comes within `seconds`, however long bus and receiver hang, and when the loop is told to end.
[[nodiscard]] BusMessage ask(EventLoop& loop, const Bus& bus, const BusMessage& call, double seconds);

} // namespace kelpa
