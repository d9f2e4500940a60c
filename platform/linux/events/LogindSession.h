#pragma once

#include "platform/linux/bus/Bus.h"

#include <memory>

namespace kelpa {

/// Called when something becomes known of the user's own session, always from the main loop.
class LogindSessionClient {
  public:
    virtual ~LogindSessionClient() = default;
    /// What the property is: when the session was found, and whenever it may have changed.
    virtual void propertyRead(bool value) = 0;
    /// The property cannot be known any more.
    virtual void propertyLost() = 0;
    /// A signal of the session's own interface.
    virtual void signalled(sd_bus_message* /*signal*/) {}
};

inline constexpr const char* logindSession = "org.freedesktop.login1.Session";

/// Tells `client` of the user's own session at logind, and of one of its properties that are either true or
/// false, until what is given is destroyed, which must not be from inside a call. All arguments outlive it.
[[nodiscard]] std::unique_ptr<BusClient>
followLogindSession(EventLoop& loop, Bus& system, const char* property, LogindSessionClient& client);

} // namespace kelpa
