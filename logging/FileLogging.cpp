#include "logging/FileLogging.h"

namespace kelpa {

FileLogging::FileLogging(std::filesystem::path localFile, const Clock& clock)
    : localFile_(std::move(localFile)), stream_(std::make_shared<FileHandlerOutputStream>(localFile_)),
      clock_(clock) {}

std::unique_ptr<FileLogHandler> FileLogging::handler(const std::string& label) const {
    return std::make_unique<FileLogHandler>(label, *this);
}

Logger FileLogging::logger(const std::string& label, const std::filesystem::path& localFile,
                           const Clock& clock) {
    return Logger(label, std::make_unique<FileLogHandler>(label, localFile, clock));
}

} // namespace kelpa
