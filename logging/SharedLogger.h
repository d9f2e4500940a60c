#pragma once

#include "base/Calendar.h"
#include "logging/Logger.h"

#include <filesystem>
#include <optional>
#include <string>

namespace kelpa {

/// Makes a log file ready to be written.
class LogFiles {
  public:
    virtual ~LogFiles() = default;
    /// Makes the folder if there is none, deletes the program's log files of other days from it and opens
    /// `folder / fileName`. Throws anything derived from `std::exception` when that fails.
    /// `identifier` is what the program's log files begin with, `today` the date text of those to keep.
    virtual LogHandlerFactory open(const std::filesystem::path& folder, const std::string& identifier,
                                   const std::string& today, const std::string& fileName) = 0;
};

/// Log files on disk, repeated on standard output.
class DailyLogFiles final : public LogFiles {
  public:
    explicit DailyLogFiles(const Clock& clock) : clock_(clock) {}
    LogHandlerFactory open(const std::filesystem::path& folder, const std::string& identifier,
                           const std::string& today, const std::string& fileName) override;

  private:
    const Clock& clock_;
};

/// What the shared logger must know of the program that it writes for.
class LogClient {
  public:
    virtual ~LogClient() = default;
    [[nodiscard]] virtual const Clock& clock() const = 0;
    [[nodiscard]] virtual std::string identifier() const = 0;
    [[nodiscard]] virtual std::string displayName() const = 0;
    [[nodiscard]] virtual std::optional<std::string> homeDirectory() const = 0;
    [[nodiscard]] virtual LogFiles& logFiles() const = 0;
};

/// Tells the shared logger whom it writes for. Call before the first line; the client is not owned.
void setLogClient(const LogClient& client);

/// The one logger of the program, made on first use: that names the day's file for the whole run, removes
/// other days' files and writes the banner. Where no file can be made it logs to standard output alone.
[[nodiscard]] Logger& logger();

/// Whether the shared logger was made already: what ends the process early must not make it.
[[nodiscard]] bool loggerExists();

/// The file that the shared logger writes; nothing when it writes none.
[[nodiscard]] const std::optional<std::filesystem::path>& logfilePath();

} // namespace kelpa
