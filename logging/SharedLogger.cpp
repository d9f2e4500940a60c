#include "logging/SharedLogger.h"

#include "base/Calendar.h"
#include "base/FatalError.h"
#include "logging/LoggingSystem.h"
#include "logging/TextOutputStream.h"

#include <exception>
#include <memory>

namespace kelpa {

namespace {

const LogClient* logClient = nullptr;
std::unique_ptr<Logger> sharedLogger;
std::optional<std::filesystem::path> sharedLogFile;

void bootstrapDailyFile(const LogClient& client, const std::string& home) {
    const std::string today = Calendar(client.clock()).weekYearDay(client.clock().now());
    const std::filesystem::path folder = std::filesystem::path(home) / "Library/Caches/Logs";
    const std::string fileName = client.identifier() + "." + today + ".log";
    LoggingSystem::bootstrap(client.logFiles().open(folder, client.identifier(), today, fileName));
    sharedLogFile = folder / fileName;
}

std::unique_ptr<Logger> makeLogger(const LogClient& client) {
    LoggingSystem::setClock(client.clock());
    const auto home = client.homeDirectory();
    if (!home)
        return std::make_unique<Logger>(client.identifier());
    try {
        bootstrapDailyFile(client, *home);
    } catch (const std::exception& error) {
        StandardOutputStream().write("create logger error: " + std::string(error.what()) + "\n");
    }
    auto made = std::make_unique<Logger>(client.identifier());
    made->info("~~~~~~~~~~~~~~~~~~~~~~~~hello " + client.displayName() + "~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~~",
               {"logger", "makeLogger()"});
    return made;
}

} // namespace

void setLogClient(const LogClient& client) {
    logClient = &client;
}

Logger& logger() {
    if (!sharedLogger) {
        if (!logClient)
            fatalError("The logger was used before the program was set up");
        sharedLogger = makeLogger(*logClient);
    }
    return *sharedLogger;
}

bool loggerExists() {
    return sharedLogger != nullptr;
}

const std::optional<std::filesystem::path>& logfilePath() {
    return sharedLogFile;
}

} // namespace kelpa
