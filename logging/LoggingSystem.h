#pragma once

#include "base/Calendar.h"
#include "logging/LogHandler.h"

namespace kelpa {

/// Knows how a label's handler is made: by the installed factory, or else to standard output.
class LoggingSystem {
  public:
    /// The clock of the default handler's time stamps; it must outlive the logging. Set before the first
    /// line.
    static void setClock(const Clock& clock);
    /// Installs the factory. A second call is a programming error: it would split the log.
    static void bootstrap(LogHandlerFactory factory);
    [[nodiscard]] static std::unique_ptr<LogHandler> handler(const std::string& label);
};

} // namespace kelpa
