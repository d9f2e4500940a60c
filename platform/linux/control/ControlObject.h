#pragma once

#include "app/RemoteControl.h"
#include "platform/linux/bus/Bus.h"

namespace kelpa {

/// Puts the remote control on the session bus, as an object that is there until what is given is destroyed.
/// Changes are announced only while some client watches, and at most once a second. All arguments outlive the
/// object, and the program has been launched.
[[nodiscard]] std::unique_ptr<BusClient> serveControl(EventLoop& loop, Bus& bus, RemoteControl& remote);

} // namespace kelpa
