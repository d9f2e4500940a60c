#pragma once

#include "base/FatalError.h"

#include <cstdlib>
#include <functional>
#include <iostream>
#include <utility>

namespace kelpa {

/// Writes the message to standard error and to the log, then aborts, so that the system's crash reporter sees
/// where it happened.
class AbortOnFatalErrors final : public FatalErrors {
  public:
    /// `log` is called with the message; an error that comes up inside it is not logged again.
    explicit AbortOnFatalErrors(std::function<void(const std::string&)> log) : log_(std::move(log)) {}

    [[noreturn]] void end(const std::string& message) override {
        std::cerr << "kelpa: " << message << std::endl;
        if (const auto log = std::exchange(log_, nullptr))
            log(message);
        std::abort();
    }

  private:
    std::function<void(const std::string&)> log_;
};

} // namespace kelpa
