#include "logging/Logger.h"

#include "logging/LoggingSystem.h"

namespace kelpa {

Logger::Logger(std::string label) : label_(std::move(label)), handler_(LoggingSystem::handler(label_)) {}

Logger::Logger(std::string label, std::unique_ptr<LogHandler> handler)
    : label_(std::move(label)), handler_(std::move(handler)) {}

void Logger::log(LogLevel level, std::string_view message, LogPlace place, const LogMetadata* metadata) {
    if (level >= handler_->logLevel())
        handler_->log(LogRecord{level, message, metadata, place});
}

} // namespace kelpa
