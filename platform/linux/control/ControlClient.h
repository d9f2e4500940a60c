#pragma once

#include "platform/linux/bus/BusMessage.h"
#include "platform/linux/control/ControlCommand.h"

#include <optional>
#include <string>

namespace kelpa {

/// How a command ends.
enum class ControlExit {
    Done = 0,
    Refused = 1, ///< or not answered
    NotRunning = 3,
};

/// Asks the running program and tells on standard output and standard error what came of it. Needs a session
/// bus and nothing else: no display, and nothing of the program's own files.
[[nodiscard]] ControlExit runControl(const ControlCommand& command);

/// The program's properties in one line: for people (state, time, a break's kind, and the water where the
/// reminder is on) or as one JSON object, always whole. Nothing when one of these is missing or of a wrong
/// type.
[[nodiscard]] std::optional<std::string> statusLine(const BusValues& values, bool asJson);

} // namespace kelpa
