#include "logging/LoggingSystem.h"

#include "base/FatalError.h"
#include "logging/StreamLogHandler.h"

namespace kelpa {

namespace {
const Clock* defaultClock = nullptr;
LogHandlerFactory installed;
} // namespace

void LoggingSystem::setClock(const Clock& clock) {
    defaultClock = &clock;
}

void LoggingSystem::bootstrap(LogHandlerFactory factory) {
    if (installed)
        fatalError("The logging system can only be set up once");
    installed = std::move(factory);
}

std::unique_ptr<LogHandler> LoggingSystem::handler(const std::string& label) {
    if (installed)
        return installed(label);
    if (!defaultClock)
        fatalError("The logging system has no clock yet");
    return std::make_unique<StreamLogHandler>(label, *defaultClock);
}

} // namespace kelpa
