#pragma once

#include <string>

namespace kelpa {

/// Where what draws reports what a person who reads the log should know.
class WindowReport {
  public:
    virtual ~WindowReport() = default;
    virtual void info(const std::string& text) = 0;
    virtual void warning(const std::string& text) = 0;
};

} // namespace kelpa
