#pragma once

#include "app/RemoteControl.h"
#include "platform/linux/bus/Bus.h"

namespace kelpa {

/// Puts the remote control on the session bus, as an object that is there until the handle ends. Changes are
/// announced only while some client watches, and at most once a second. All arguments outlive the handle, and
/// the program has been launched.
[[nodiscard]] Subscription serveControl(EventLoop& loop, Bus& bus, RemoteControl& remote);

} // namespace kelpa
