#pragma once

#include "logging/LogHandler.h"

namespace kelpa {

/// Carries a label and hands every record at or above its level to its handler.
class Logger {
  public:
    /// With the handler that the logging system makes for the label.
    explicit Logger(std::string label);
    Logger(std::string label, std::unique_ptr<LogHandler> handler);

    void log(LogLevel level, std::string_view message, LogPlace place, const LogMetadata* metadata = nullptr);
    void trace(std::string_view message, LogPlace place = {}) { log(LogLevel::Trace, message, place); }
    void debug(std::string_view message, LogPlace place = {}) { log(LogLevel::Debug, message, place); }
    void info(std::string_view message, LogPlace place = {}) { log(LogLevel::Info, message, place); }
    void notice(std::string_view message, LogPlace place = {}) { log(LogLevel::Notice, message, place); }
    void warning(std::string_view message, LogPlace place = {}) { log(LogLevel::Warning, message, place); }
    void error(std::string_view message, LogPlace place = {}) { log(LogLevel::Error, message, place); }
    void critical(std::string_view message, LogPlace place = {}) { log(LogLevel::Critical, message, place); }

    [[nodiscard]] const std::string& label() const { return label_; }
    [[nodiscard]] LogHandler& handler() { return *handler_; }

  private:
    std::string label_;
    std::unique_ptr<LogHandler> handler_;
};

} // namespace kelpa
