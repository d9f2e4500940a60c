#pragma once

#include "logging/Logger.h"

#include <vector>

namespace kelpa {

/// Takes whole pieces of UTF-8 text.
class TextOutputStream {
  public:
    virtual ~TextOutputStream() = default;
    virtual void write(std::string_view text) = 0;
};

/// The process's standard output; each piece is out when the call returns.
class StandardOutputStream final : public TextOutputStream {
  public:
    void write(std::string_view text) override;
};

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
    using LogHandler::metadata;
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

/// Writes the lines of a label to standard output.
class StreamLogHandler final : public LineLogHandler {
  public:
    StreamLogHandler(std::string label, const Clock& clock)
        : LineLogHandler(std::move(label), std::make_shared<StandardOutputStream>(), clock) {}
};

/// Forwards each record to several handlers in their order, to each by its own level. As a handler it has the
/// lowest of their levels and the union of their metadata, where an earlier handler's value wins.
class MultiplexLogHandler final : public LogHandler {
  public:
    /// `handlers` must not be empty.
    explicit MultiplexLogHandler(std::vector<std::unique_ptr<LogHandler>> handlers);

    void log(const LogRecord& record) override;
    [[nodiscard]] LogLevel logLevel() const override;
    void setLogLevel(LogLevel level) override;
    [[nodiscard]] LogMetadata metadata() const override;
    void setMetadata(LogMetadata metadata) override;
    using LogHandler::metadata;
    void setMetadata(const std::string& key, std::optional<std::string> value) override;

  private:
    std::vector<std::unique_ptr<LogHandler>> handlers_;
};

} // namespace kelpa
