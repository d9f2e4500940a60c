#pragma once

#include "base/FatalError.h"

#include <cstdlib>
#include <iostream>
#include <utility>

namespace kelpa {

/// Writes the message to standard error and to the log, then aborts, so that the system's crash reporter sees
/// where it happened. `log` is called with the message; an error that comes up inside it is not logged again.
[[nodiscard]] inline FatalErrorHandler
abortOnFatalErrors(std::function<void(const std::string& message)> log) {
    return [log = std::move(log)](const std::string& message) mutable {
        std::cerr << "kelpa: " << message << std::endl;
        if (const auto once = std::exchange(log, nullptr))
            once(message);
        std::abort();
    };
}

} // namespace kelpa
