#pragma once

#include <string>

namespace kelpa {

/// How the process ends on a programming error.
class FatalErrors {
  public:
    virtual ~FatalErrors() = default;
    [[noreturn]] virtual void end(const std::string& message) = 0;
};

} // namespace kelpa
