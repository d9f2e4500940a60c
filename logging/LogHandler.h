#pragma once

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
    [[nodiscard]] virtual std::optional<std::string> metadata(const std::string& key) const = 0;
    /// Sets one entry, or removes it when there is no value.
    virtual void setMetadata(const std::string& key, std::optional<std::string> value) = 0;
};

/// Makes the handler of a label.
using LogHandlerFactory = std::function<std::unique_ptr<LogHandler>(const std::string& label)>;

} // namespace kelpa
