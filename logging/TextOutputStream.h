#pragma once

#include <cstdio>
#include <filesystem>
#include <stdexcept>
#include <string>
#include <string_view>

namespace kelpa {

/// Takes whole pieces of UTF-8 text.
class TextOutputStream {
  public:
    virtual ~TextOutputStream() = default;
    virtual void write(std::string_view text) = 0;
};

/// The process's standard output; each piece is out when the call returns.
class StandardOutputStream final : public TextOutputStream {
  public:
    void write(std::string_view text) override;
};

enum class TextEncoding { Utf8, Ascii, Latin1 };

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

} // namespace kelpa
