#pragma once

#include "logging/LogHandlers.h"

#include <cstdio>
#include <filesystem>
#include <stdexcept>

namespace kelpa {

enum class TextEncoding { Utf8, Ascii, Latin1 };

/// The bytes of a UTF-8 text in another encoding, without loss; nothing if the text is no UTF-8 or the
/// encoding has no place for one of its characters.
[[nodiscard]] std::optional<std::string> encoded(std::string_view utf8, TextEncoding encoding);

/// Appends to one file, which stays open as long as the stream lives. Text that the encoding cannot hold is
/// skipped, and so is what the disk has no room for: a log must never stop the program.
class FileHandlerOutputStream final : public TextOutputStream {
  public:
    struct CouldNotCreateFile : std::runtime_error {
        using std::runtime_error::runtime_error;
    };

    /// Creates the file if there is none, and keeps it from other users unless it lies behind a link. Throws
    /// `CouldNotCreateFile`, or `std::system_error` when the file is there but cannot be opened for writing,
    /// as a pipe, which nobody may read.
    explicit FileHandlerOutputStream(const std::filesystem::path& localFile,
                                     TextEncoding encoding = TextEncoding::Utf8);
    ~FileHandlerOutputStream() override;
    FileHandlerOutputStream(const FileHandlerOutputStream&) = delete;
    FileHandlerOutputStream& operator=(const FileHandlerOutputStream&) = delete;

    void write(std::string_view text) override;

  private:
    std::FILE* fileHandle_ = nullptr;
    TextEncoding encoding_;
};

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
