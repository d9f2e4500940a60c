#include "logging/FileLogging.h"
#include "logging/MultiplexLogHandler.h"
#include "logging/SharedLogger.h"
#include "logging/StreamLogHandler.h"

#include <vector>

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

} // namespace

LogHandlerFactory DailyLogFiles::open(const fs::path& folder, const std::string& identifier,
                                      const std::string& today, const std::string& fileName) {
    if (fs::exists(folder))
        deleteOldLogs(folder, identifier, today);
    makePrivate(folder);
    auto file = std::make_shared<FileLogging>(folder / fileName, clock_);
    return [file, &clock = clock_](const std::string& label) -> std::unique_ptr<LogHandler> {
        std::vector<std::unique_ptr<LogHandler>> handlers;
        handlers.push_back(file->handler(label));
        handlers.push_back(std::make_unique<StreamLogHandler>(label, clock));
        return std::make_unique<MultiplexLogHandler>(std::move(handlers));
    };
}

} // namespace kelpa
