#pragma once

#include "platform/linux/EventLoop.h"
#include "tests/support/Files.h"

#include <chrono>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <iterator>
#include <string>
#include <systemd/sd-event.h>

namespace kelpa::test {

inline double secondsNow() {
    return std::chrono::duration<double>(std::chrono::steady_clock::now().time_since_epoch()).count();
}

/// Serves the loop until `reached` or until the time is up; gives what `reached` says at the end.
inline bool spinUntil(EventLoop& loop, const std::function<bool()>& reached, double seconds = 5) {
    const double end = secondsNow() + seconds;
    while (!reached() && secondsNow() < end)
        sd_event_run(loop.handle(), 5'000);
    return reached();
}

inline void spin(EventLoop& loop, double seconds) {
    spinUntil(
        loop, [] { return false; }, seconds);
}

} // namespace kelpa::test
