#pragma once

#include <string>

namespace kelpa {

class FatalErrors;

/// Chooses how programming errors end the process. Without a choice `fatalError` writes to standard error and
/// aborts. The object must outlive the process's last use of the core.
void setFatalErrors(FatalErrors& how);

/// Ends the process because the program itself is wrong: going on would only spread the fault.
[[noreturn]] void fatalError(const std::string& message);

} // namespace kelpa
