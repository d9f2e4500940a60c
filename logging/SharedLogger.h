#pragma once

#include "logging/Logger.h"

#include <filesystem>

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

/// The program that the shared logger writes for. What it refers to must outlive the logging.
struct LogSetup {
    const Clock& clock;
    LogFiles& files;
    std::string identifier;
    std::string displayName;
    std::optional<std::string> homeDirectory;
};

/// Says for whom the shared logger, which is made on first use, will write. Call before the first line.
void setUpLogging(LogSetup setup);

/// The one logger of the program, made on first use: that names the day's file for the whole run, removes
/// other days' files and writes the banner. Where no file can be made it logs to standard output alone.
[[nodiscard]] Logger& logger();

/// Whether the shared logger was made already: what ends the process early must not make it.
[[nodiscard]] bool loggerExists();

/// The file that the shared logger writes; nothing when it writes none.
[[nodiscard]] const std::optional<std::filesystem::path>& logfilePath();

} // namespace kelpa
