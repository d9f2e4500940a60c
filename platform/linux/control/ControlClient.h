#pragma once

#include "platform/linux/control/ControlCommand.h"

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

} // namespace kelpa
