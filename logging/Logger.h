#pragma once

#include "base/Calendar.h"

#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace kelpa {

/// Lowest first; a level includes all above it.
enum class LogLevel { Trace, Debug, Info, Notice, Warning, Error, Critical };

/// The level's name as it stands on a line.
[[nodiscard]] std::string_view name(LogLevel level);

using LogMetadata = std::map<std::string, std::string>;

/// Where in the program a record comes from.
struct LogPlace {
    std::string_view source;
    std::string_view function;
    std::string_view file = {};
    unsigned line = 0;
};

struct LogRecord {
    LogLevel level = LogLevel::Info;
    std::string_view message;
    const LogMetadata* metadata = nullptr; ///< of this call; null for none
    LogPlace place;
};

/// Takes records to some place. It drops nothing by itself: the logger asks for `logLevel()` first.
class LogHandler {
  public:
    virtual ~LogHandler() = default;
    virtual void log(const LogRecord& record) = 0;
    [[nodiscard]] virtual LogLevel logLevel() const = 0;
    virtual void setLogLevel(LogLevel level) = 0;
    [[nodiscard]] virtual LogMetadata metadata() const = 0;
    virtual void setMetadata(LogMetadata metadata) = 0;
    [[nodiscard]] std::optional<std::string> metadata(const std::string& key) const;
    /// Sets one entry, or removes it when there is no value.
    virtual void setMetadata(const std::string& key, std::optional<std::string> value) = 0;
};

/// Makes the handler of a label.
using LogHandlerFactory = std::function<std::unique_ptr<LogHandler>(const std::string& label)>;

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

/// Knows how a label's handler is made: by the installed factory, or else to standard output.
class LoggingSystem {
  public:
    /// The clock of the default handler's time stamps; it must outlive the logging. Set before the first
    /// line.
    static void setClock(const Clock& clock);
    /// Installs the factory. A second call is a programming error: it would split the log.
    static void bootstrap(LogHandlerFactory factory);
    [[nodiscard]] static std::unique_ptr<LogHandler> handler(const std::string& label);
};

} // namespace kelpa
