#include "logging/SharedLogger.h"

#include "base/Calendar.h"
#include "base/FatalError.h"
#include "logging/FileLogging.h"

#include <exception>

namespace kelpa {

namespace {

namespace fs = std::filesystem;

bool isOldLog(const std::string& name, const std::string& identifier, const std::string& today) {
    return name.starts_with(identifier) && name.ends_with(".log") && name.find(today) == std::string::npos;
}

void deleteOldLogs(const fs::path& folder, const std::string& identifier, const std::string& today) {
    // Everything is listed before anything is deleted: a folder must not change while it is walked.
    std::vector<fs::path> old;
    for (const auto& entry : fs::recursive_directory_iterator(folder))
        if (isOldLog(entry.path().filename().string(), identifier, today))
            old.push_back(entry.path());
    for (const auto& path : old)
        fs::remove_all(path);
}

/// The folder and those around it that are missing, for this user alone. What others could enter before is
/// closed to them, but for what a link leads to, which is somebody else's.
void makePrivate(const fs::path& folder) {
    if (!fs::exists(folder)) {
        if (folder.has_parent_path() && !fs::exists(folder.parent_path()))
            makePrivate(folder.parent_path());
        fs::create_directory(folder);
    }
    std::error_code ignored;
    if (fs::is_directory(fs::symlink_status(folder, ignored)))
        fs::permissions(folder, fs::perms::owner_all, ignored);
}

Wired<LogSetup> wired("The logger was");
std::unique_ptr<Logger> sharedLogger;
std::optional<std::filesystem::path> sharedLogFile;

void bootstrapDailyFile(const LogSetup& setup, const std::string& home) {
    const std::string today = Calendar(setup.clock).weekYearDay(setup.clock.now());
    const std::filesystem::path folder = std::filesystem::path(home) / "Library/Caches/Logs";
    const std::string fileName = setup.identifier + "." + today + ".log";
    LoggingSystem::bootstrap(setup.openFile(folder, setup.identifier, today, fileName));
    sharedLogFile = folder / fileName;
}

std::unique_ptr<Logger> makeLogger(const LogSetup& setup) {
    LoggingSystem::setClock(setup.clock);
    if (!setup.homeDirectory)
        return std::make_unique<Logger>(setup.identifier);
    try {
        bootstrapDailyFile(setup, *setup.homeDirectory);
    } catch (const std::exception& error) {
        StandardOutputStream().write("create logger error: " + std::string(error.what()) + "\n");
    }
    auto made = std::make_unique<Logger>(setup.identifier);
    made->info("~~~~~~~~~~~~~~~~~~~~~~~~hello " + setup.displayName + "~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~",
               {"logger", "makeLogger()"});
    return made;
}

} // namespace

LogFileOpener dailyLogFiles(const Clock& clock) {
    return [&clock](const fs::path& folder, const std::string& identifier, const std::string& today,
                    const std::string& fileName) {
        if (fs::exists(folder))
            deleteOldLogs(folder, identifier, today);
        makePrivate(folder);
        auto file = std::make_shared<FileLogging>(folder / fileName, clock);
        return [file](const std::string& label) -> std::unique_ptr<LogHandler> {
            std::vector<std::unique_ptr<LogHandler>> handlers;
            handlers.push_back(file->handler(label));
            handlers.push_back(std::make_unique<StreamLogHandler>(label, file->clock()));
            return std::make_unique<MultiplexLogHandler>(std::move(handlers));
        };
    };
}

void setUpLogging(LogSetup setup) {
    wired.wire(std::move(setup));
}

Logger& logger() {
    if (!sharedLogger)
        sharedLogger = makeLogger(*wired);
    return *sharedLogger;
}

void logCritical(const std::string& message) {
    if (sharedLogger)
        sharedLogger->critical(message);
}

const std::optional<std::filesystem::path>& logfilePath() {
    return sharedLogFile;
}

} // namespace kelpa
