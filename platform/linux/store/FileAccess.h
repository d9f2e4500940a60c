#pragma once

#include "platform/linux/Descriptors.h"

#include <cstdint>
#include <optional>
#include <string>

struct stat;

namespace kelpa {

/// What tells one state of a file from another without reading it.
struct FileIdentity {
    std::uint64_t device = 0;
    std::uint64_t inode = 0;
    std::int64_t size = -1; ///< -1 for no file
    /// Of the last change, nanoseconds since 1970. Not the time stamp of the content, which programs may set.
    std::int64_t changed = 0;
    bool operator==(const FileIdentity&) const = default;

    [[nodiscard]] bool exists() const { return size >= 0; }
    static FileIdentity of(const struct stat& status);
    /// Of the file behind `path`, links followed; throws `std::system_error` when it cannot be told.
    static FileIdentity of(const std::string& path);
};

struct FileContent {
    std::string bytes;
    FileIdentity identity;
};

/// Reads a whole regular file; nothing where there is none. Throws `std::system_error` when it cannot be read
/// or is larger than 16 MiB, which no settings file is.
[[nodiscard]] std::optional<FileContent> readFile(const std::string& path);

/// Puts `bytes` in the place of `path` with mode 0600 so that a reader finds the old content or the new one,
/// also after a crash; gives the new file's identity. Only one may do it at a time: it works on
/// `path` + ".new". Throws `std::system_error` with the old content in place.
FileIdentity replaceFile(const std::string& path, const std::string& bytes);

/// Moves a file to the first free name of `path` + ".damaged-1", "-2", …, which it gives.
/// Throws `std::system_error`.
std::string setAside(const std::string& path);

/// Where writes to `path` go: a symbolic link stays one, its target is written, also one that is not there
/// yet.
[[nodiscard]] std::string linkTarget(std::string path);

/// Makes the folder that `path` lies in, as private to the user, if it is missing. Throws
/// `std::system_error`.
void makeFolderOf(const std::string& path);

/// Keeps other processes from writing at the same time. Waits half a second at most, because the program's
/// main thread does the waiting, and throws `std::system_error` after that.
class FileLock {
  public:
    explicit FileLock(const std::string& path);

  private:
    Descriptor file_;
};

} // namespace kelpa
