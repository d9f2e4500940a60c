#include "logging/Logger.h"

#include "base/FatalError.h"
#include "logging/LogHandlers.h"

#include <array>

namespace kelpa {

namespace {

const Clock* defaultClock = nullptr;
LogHandlerFactory installed;

} // namespace

std::string_view name(LogLevel level) {
    constexpr std::array<std::string_view, 7> names = {"trace",   "debug", "info",    "notice",
                                                       "warning", "error", "critical"};
    return names[static_cast<std::size_t>(level)];
}

std::optional<std::string> LogHandler::metadata(const std::string& key) const {
    const LogMetadata all = metadata();
    const auto found = all.find(key);
    return found == all.end() ? std::nullopt : std::optional(found->second);
}

Logger::Logger(std::string label) : label_(std::move(label)), handler_(LoggingSystem::handler(label_)) {}

Logger::Logger(std::string label, std::unique_ptr<LogHandler> handler)
    : label_(std::move(label)), handler_(std::move(handler)) {}

void Logger::log(LogLevel level, std::string_view message, LogPlace place, const LogMetadata* metadata) {
    if (level >= handler_->logLevel())
        handler_->log(LogRecord{level, message, metadata, place});
}

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
