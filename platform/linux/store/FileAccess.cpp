#include "platform/linux/store/FileAccess.h"

#include <array>
#include <cerrno>
#include <cstdio>
#include <ctime>
#include <fcntl.h>
#include <filesystem>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace kelpa {

namespace {

namespace fs = std::filesystem;

constexpr std::int64_t largest = 16 << 20;
constexpr int mostLinks = 40;
constexpr int lockTries = 500;
constexpr timespec betweenTries{0, 1'000'000};

[[noreturn]] void fail(int error, const std::string& path) {
    throw std::system_error(error, std::generic_category(), path);
}

void check(bool succeeded, const std::string& path) {
    if (!succeeded)
        fail(errno, path);
}

std::string folderOf(const std::string& path) {
    const auto folder = fs::path(path).parent_path();
    return folder.empty() ? "." : folder.string();
}

Descriptor openFile(const std::string& path, int flags) {
    return Descriptor(open(path.c_str(), flags | O_CLOEXEC, S_IRUSR | S_IWUSR));
}

void writeAll(int fd, const std::string& bytes, const std::string& path) {
    for (std::size_t done = 0; done < bytes.size();) {
        const ssize_t count = write(fd, bytes.data() + done, bytes.size() - done);
        if (count < 0 && errno == EINTR)
            continue;
        check(count >= 0, path);
        done += static_cast<std::size_t>(count);
    }
}

std::string readAll(int fd, const std::string& path) {
    std::string bytes;
    std::array<char, 4096> part{};
    for (;;) {
        const ssize_t count = read(fd, part.data(), part.size());
        if (count < 0 && errno == EINTR)
            continue;
        check(count >= 0, path);
        if (count == 0)
            return bytes;
        bytes.append(part.data(), static_cast<std::size_t>(count));
        if (static_cast<std::int64_t>(bytes.size()) > largest)
            fail(EFBIG, path);
    }
}

FileIdentity identityOf(int fd, const std::string& path) {
    struct stat status {};
    check(fstat(fd, &status) == 0, path);
    if (!S_ISREG(status.st_mode))
        fail(S_ISDIR(status.st_mode) ? EISDIR : EINVAL, path);
    return FileIdentity::of(status);
}

/// The rename is on disk only when the folder is. Some file systems cannot do it; the new file stands anyway.
void syncFolderOf(const std::string& path) {
    const auto folder = openFile(folderOf(path), O_RDONLY | O_DIRECTORY);
    if (folder)
        fsync(folder.get());
}

FileIdentity writeNew(const std::string& path, const std::string& bytes) {
    // What a killed process left behind goes first, so that nothing of its owner and mode lives on.
    unlink(path.c_str());
    const auto file = openFile(path, O_WRONLY | O_CREAT | O_EXCL);
    check(file.get() >= 0, path);
    writeAll(file.get(), bytes, path);
    check(fsync(file.get()) == 0, path);
    return identityOf(file.get(), path);
}

/// Renames without ever overwriting; false where the new name is taken.
bool renameToFree(const std::string& from, const std::string& to) {
    if (renameat2(AT_FDCWD, from.c_str(), AT_FDCWD, to.c_str(), RENAME_NOREPLACE) == 0)
        return true;
    if (errno == EEXIST)
        return false;
    // Not every file system knows the flag.
    check(errno == EINVAL || errno == ENOSYS, from);
    if (access(to.c_str(), F_OK) == 0)
        return false;
    check(rename(from.c_str(), to.c_str()) == 0, from);
    return true;
}

} // namespace

FileIdentity FileIdentity::of(const struct stat& status) {
    return {status.st_dev, status.st_ino, status.st_size,
            status.st_ctim.tv_sec * std::int64_t{1'000'000'000} + status.st_ctim.tv_nsec};
}

FileIdentity FileIdentity::of(const std::string& path) {
    struct stat status {};
    if (stat(path.c_str(), &status) == 0)
        return of(status);
    check(errno == ENOENT || errno == ENOTDIR, path);
    return {};
}

std::optional<FileContent> readFile(const std::string& path) {
    // Non-blocking, because opening a pipe in the file's place would wait for its other end for ever.
    const auto file = openFile(path, O_RDONLY | O_NONBLOCK);
    if (!file && (errno == ENOENT || errno == ENOTDIR))
        return std::nullopt;
    check(file.get() >= 0, path);
    FileContent content;
    content.identity = identityOf(file.get(), path);
    content.bytes = readAll(file.get(), path);
    return content;
}

FileIdentity replaceFile(const std::string& path, const std::string& bytes) {
    const std::string fresh = path + ".new";
    try {
        const auto written = writeNew(fresh, bytes);
        check(rename(fresh.c_str(), path.c_str()) == 0, path);
        syncFolderOf(path);
        // The new name is a change as well. If the file is no longer ours, ours is told, so that theirs gets
        // read.
        const auto named = FileIdentity::of(path);
        return named.inode == written.inode && named.device == written.device ? named : written;
    } catch (...) {
        unlink(fresh.c_str());
        throw;
    }
}

std::string setAside(const std::string& path) {
    for (int number = 1;; ++number) {
        std::string name = path + ".damaged-" + std::to_string(number);
        if (renameToFree(path, name))
            return name;
    }
}

std::string linkTarget(std::string path) {
    for (int links = 0; links < mostLinks; ++links) {
        std::error_code none;
        const auto target = fs::read_symlink(path, none);
        if (none)
            return path;
        path = fs::path(path).parent_path() / target;
    }
    fail(ELOOP, path);
}

void makeFolderOf(const std::string& path) {
    const std::string folder = folderOf(path);
    if (mkdir(folder.c_str(), S_IRWXU) == 0 || errno == EEXIST)
        return;
    check(errno == ENOENT, folder);
    makeFolderOf(folder);
    check(mkdir(folder.c_str(), S_IRWXU) == 0 || errno == EEXIST, folder);
}

FileLock::FileLock(const std::string& path) : file_(openFile(path, O_RDWR | O_CREAT)) {
    check(file_.get() >= 0, path);
    for (int tries = 0; flock(file_.get(), LOCK_EX | LOCK_NB) != 0; ++tries) {
        if ((errno != EWOULDBLOCK && errno != EINTR) || tries == lockTries)
            fail(errno, path);
        nanosleep(&betweenTries, nullptr);
    }
}

} // namespace kelpa
