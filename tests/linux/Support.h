#pragma once

#include "platform/linux/EventLoop.h"
#include "tests/support/Files.h"

#include <chrono>
#include <functional>
#include <iterator>
#include <sstream>
#include <string>
#include <systemd/sd-event.h>
#include <vector>

namespace kelpa::test {

/// The words of a line, as of a command without quotes.
inline std::vector<std::string> wordsOf(const std::string& line) {
    std::istringstream words(line);
    return {std::istream_iterator<std::string>(words), {}};
}

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
