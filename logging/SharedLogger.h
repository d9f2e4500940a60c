#pragma once

#include "logging/Logger.h"

#include <filesystem>

namespace kelpa {

/// Makes a log file ready to be written: makes the folder if there is none, deletes the program's log files
/// of other days from it and opens `folder / fileName`. Throws anything derived from `std::exception` when
/// that fails. `identifier` is what the program's log files begin with, `today` the date text of those to
/// keep.
using LogFileOpener =
    std::function<LogHandlerFactory(const std::filesystem::path& folder, const std::string& identifier,
                                    const std::string& today, const std::string& fileName)>;

/// Log files on disk, repeated on standard output. The clock must outlive the logging.
[[nodiscard]] LogFileOpener dailyLogFiles(const Clock& clock);

/// The program that the shared logger writes for. What it refers to must outlive the logging.
struct LogSetup {
    const Clock& clock;
    LogFileOpener openFile;
    std::string identifier;
    std::string displayName;
    std::optional<std::string> homeDirectory;
};

/// Says for whom the shared logger, which is made on first use, will write. Call before the first line.
void setUpLogging(LogSetup setup);

/// The one logger of the program, made on first use: that names the day's file for the whole run, removes
/// other days' files and writes the banner. Where no file can be made it logs to standard output alone.
[[nodiscard]] Logger& logger();

/// Tells the log what ends the process, though not before the first line of the run: an early error must not
/// make the log that it would go to.
void logCritical(const std::string& message);

/// The file that the shared logger writes; nothing when it writes none.
[[nodiscard]] const std::optional<std::filesystem::path>& logfilePath();

} // namespace kelpa
