#include "logging/LogHandlers.h"

#include "base/FatalError.h"

#include <algorithm>
#include <cstdio>
#include <cstdlib>

namespace kelpa {

namespace {

std::optional<std::string> pretty(const LogMetadata& metadata) {
    if (metadata.empty())
        return std::nullopt;
    std::string text;
    for (const auto& [key, value] : metadata)
        text.append(text.empty() ? "" : " ").append(key).append("=").append(value);
    return text;
}

} // namespace

void StandardOutputStream::write(std::string_view text) {
    std::fwrite(text.data(), 1, text.size(), stdout);
    std::fflush(stdout);
}

std::string logTimeStamp(const Clock& clock) {
    const Date now = clock.now();
    const CivilTime t = clock.civil(now);
    const int offset = clock.utcOffset(now);
    const int minutes = std::abs(offset) / 60;
    char text[255];
    std::snprintf(text, sizeof text, "%d-%02d-%02dT%02d:%02d:%02d%c%02d%02d", t.year, t.month, t.day, t.hour,
                  t.minute, t.second, offset < 0 ? '-' : '+', minutes / 60, minutes % 60);
    return text;
}

LineLogHandler::LineLogHandler(std::string label, std::shared_ptr<TextOutputStream> stream,
                               const Clock& clock)
    : label_(std::move(label)), stream_(std::move(stream)), clock_(clock) {}

void LineLogHandler::log(const LogRecord& record) {
    std::string line = logTimeStamp(clock_);
    line.append(" ").append(name(record.level)).append(" ").append(label_).append(" :");
    if (const auto metadata = rendered(record.metadata))
        line.append(" ").append(*metadata);
    line.append(" ").append(record.message).append("\n");
    stream_->write(line);
}

std::optional<std::string> LineLogHandler::rendered(const LogMetadata* ofCall) const {
    if (!ofCall || ofCall->empty())
        return prettyMetadata_;
    LogMetadata merged = *ofCall;
    merged.insert(metadata_.begin(), metadata_.end());
    return pretty(merged);
}

void LineLogHandler::setMetadata(LogMetadata metadata) {
    metadata_ = std::move(metadata);
    prettyMetadata_ = pretty(metadata_);
}

void LineLogHandler::setMetadata(const std::string& key, std::optional<std::string> value) {
    if (value)
        metadata_[key] = std::move(*value);
    else
        metadata_.erase(key);
    prettyMetadata_ = pretty(metadata_);
}

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

void MultiplexLogHandler::setMetadata(const std::string& key, std::optional<std::string> value) {
    for (const auto& handler : handlers_)
        handler->setMetadata(key, value);
}

} // namespace kelpa
