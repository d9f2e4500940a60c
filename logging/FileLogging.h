#pragma once

#include "logging/LineLogHandler.h"
#include "logging/Logger.h"

#include <filesystem>

namespace kelpa {

class FileLogHandler;

/// Owns one log file; every handler made of it writes there.
class FileLogging {
  public:
    /// Throws what `FileHandlerOutputStream` throws.
    FileLogging(std::filesystem::path localFile, const Clock& clock);

    [[nodiscard]] std::unique_ptr<FileLogHandler> handler(const std::string& label) const;
    [[nodiscard]] const std::filesystem::path& localFile() const { return localFile_; }
    [[nodiscard]] const std::shared_ptr<TextOutputStream>& stream() const { return stream_; }
    [[nodiscard]] const Clock& clock() const { return clock_; }

    /// A logger that writes to this file alone. Throws like the constructor.
    [[nodiscard]] static Logger logger(const std::string& label, const std::filesystem::path& localFile,
                                       const Clock& clock);

  private:
    std::filesystem::path localFile_;
    std::shared_ptr<TextOutputStream> stream_;
    const Clock& clock_;
};

/// Writes the lines of a label to a log file.
class FileLogHandler final : public LineLogHandler {
  public:
    FileLogHandler(const std::string& label, const FileLogging& fileLogger)
        : LineLogHandler(label, fileLogger.stream(), fileLogger.clock()) {}
    /// Throws what `FileHandlerOutputStream` throws.
    FileLogHandler(const std::string& label, const std::filesystem::path& localFile, const Clock& clock)
        : FileLogHandler(label, FileLogging(localFile, clock)) {}
};

} // namespace kelpa
