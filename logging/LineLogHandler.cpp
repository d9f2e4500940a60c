#include "logging/LineLogHandler.h"

#include <array>
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

std::string_view name(LogLevel level) {
    constexpr std::array<std::string_view, 7> names = {"trace",   "debug", "info",    "notice",
                                                       "warning", "error", "critical"};
    return names[static_cast<std::size_t>(level)];
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

std::optional<std::string> LineLogHandler::metadata(const std::string& key) const {
    const auto found = metadata_.find(key);
    return found == metadata_.end() ? std::nullopt : std::optional(found->second);
}

void LineLogHandler::setMetadata(const std::string& key, std::optional<std::string> value) {
    if (value)
        metadata_[key] = std::move(*value);
    else
        metadata_.erase(key);
    prettyMetadata_ = pretty(metadata_);
}

} // namespace kelpa
