#include "logging/MultiplexLogHandler.h"

#include "base/FatalError.h"

#include <algorithm>

namespace kelpa {

MultiplexLogHandler::MultiplexLogHandler(std::vector<std::unique_ptr<LogHandler>> handlers)
    : handlers_(std::move(handlers)) {
    if (handlers_.empty())
        fatalError("A multiplexed log needs at least one handler");
}

void MultiplexLogHandler::log(const LogRecord& record) {
    for (const auto& handler : handlers_)
        if (record.level >= handler->logLevel())
            handler->log(record);
}

LogLevel MultiplexLogHandler::logLevel() const {
    LogLevel lowest = handlers_.front()->logLevel();
    for (const auto& handler : handlers_)
        lowest = std::min(lowest, handler->logLevel());
    return lowest;
}

void MultiplexLogHandler::setLogLevel(LogLevel level) {
    for (const auto& handler : handlers_)
        handler->setLogLevel(level);
}

LogMetadata MultiplexLogHandler::metadata() const {
    LogMetadata all;
    for (const auto& handler : handlers_)
        all.merge(handler->metadata());
    return all;
}

void MultiplexLogHandler::setMetadata(LogMetadata metadata) {
    for (const auto& handler : handlers_)
        handler->setMetadata(metadata);
}

std::optional<std::string> MultiplexLogHandler::metadata(const std::string& key) const {
    for (const auto& handler : handlers_)
        if (auto value = handler->metadata(key))
            return value;
    return std::nullopt;
}

void MultiplexLogHandler::setMetadata(const std::string& key, std::optional<std::string> value) {
    for (const auto& handler : handlers_)
        handler->setMetadata(key, value);
}

} // namespace kelpa
