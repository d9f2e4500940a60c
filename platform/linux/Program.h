#pragma once

#include "platform/linux/display/Display.h"
#include "platform/linux/instance/Instance.h"

namespace kelpa {

/// Runs the whole program on a Linux desktop until it ends, and gives the exit code. The history is shown at
/// once if that is wished for.
[[nodiscard]] int runProgram(EventLoop& loop, Display& display, double speed, Bus& session,
                             Instance& instance, StartWish wish);

} // namespace kelpa
