#pragma once

#include "logging/LogHandler.h"

#include <vector>

namespace kelpa {

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
    [[nodiscard]] std::optional<std::string> metadata(const std::string& key) const override;
    void setMetadata(const std::string& key, std::optional<std::string> value) override;

  private:
    std::vector<std::unique_ptr<LogHandler>> handlers_;
};

} // namespace kelpa
