#pragma once

#include "base/Calendar.h"
#include "logging/LogHandler.h"
#include "logging/TextOutputStream.h"

#include <memory>

namespace kelpa {

/// Writes one line a record: time stamp, level, label, " :", the metadata if there is any, the message.
/// The metadata of the call wins over the handler's own.
class LineLogHandler : public LogHandler {
  public:
    LineLogHandler(std::string label, std::shared_ptr<TextOutputStream> stream, const Clock& clock);

    void log(const LogRecord& record) override;
    [[nodiscard]] LogLevel logLevel() const override { return logLevel_; }
    void setLogLevel(LogLevel level) override { logLevel_ = level; }
    [[nodiscard]] LogMetadata metadata() const override { return metadata_; }
    void setMetadata(LogMetadata metadata) override;
    [[nodiscard]] std::optional<std::string> metadata(const std::string& key) const override;
    void setMetadata(const std::string& key, std::optional<std::string> value) override;

  private:
    [[nodiscard]] std::optional<std::string> rendered(const LogMetadata* ofCall) const;

    std::string label_;
    std::shared_ptr<TextOutputStream> stream_;
    const Clock& clock_;
    LogLevel logLevel_ = LogLevel::Info;
    LogMetadata metadata_;
    std::optional<std::string> prettyMetadata_; ///< `metadata_` as it stands on a line, made when it changes
};

/// Local time as "2026-11-21T10:15:30+0100".
[[nodiscard]] std::string logTimeStamp(const Clock& clock);

} // namespace kelpa
