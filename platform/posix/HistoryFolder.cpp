#include "platform/posix/HistoryFolder.h"

#include "base/Text.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>
#include <vector>

namespace kelpa {

namespace {

namespace fs = std::filesystem;

/// A month of which a line was written each second is shorter.
constexpr off_t longestFile = 256 * 1024 * 1024;

/// An open file of this process, or none.
class File {
  public:
    File(const std::string& path, int flags)
        // A pipe is not waited for.
        : number_(::open(path.c_str(), flags | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, S_IRUSR | S_IWUSR)) {}
    ~File() {
        if (number_ >= 0)
            ::close(number_);
    }
    File(const File&) = delete;
    File& operator=(const File&) = delete;
    [[nodiscard]] int number() const { return number_; }

  private:
    int number_;
};

std::string wordsFor(const std::string& path, int error) {
    return path + ": " + std::generic_category().message(error);
}

/// 0 for a regular file of a sensible size, else what is wrong with it.
int examine(int file, struct stat& status) {
    if (file < 0 || ::fstat(file, &status) != 0)
        return errno;
    if (S_ISDIR(status.st_mode))
        return EISDIR;
    if (!S_ISREG(status.st_mode))
        return EINVAL;
    return status.st_size > longestFile ? EFBIG : 0;
}

/// A folder for this user alone, with those that it lies in.
void makePrivate(const fs::path& folder) {
    std::error_code ignored;
    if (folder.empty() || fs::is_directory(folder, ignored))
        return;
    makePrivate(folder.parent_path());
    ::mkdir(folder.c_str(), S_IRWXU);
}

/// What has to stand before a line: the header of a new file, the end of a line that was cut off.
std::string before(int file, off_t size, std::string_view header) {
    if (size == 0)
        return std::string(header) + "\n";
    char last = '\n';
    return ::pread(file, &last, 1, size - 1) == 1 && last != '\n' ? "\n" : "";
}

/// 0 when all of it was written, or all but its line feed, which the next line brings.
int writeAtOnce(int file, const std::string& bytes) {
    ssize_t written = -1;
    do
        written = ::write(file, bytes.data(), bytes.size());
    while (written < 0 && errno == EINTR);
    if (written < 0)
        return errno;
    return static_cast<std::size_t>(written) + 1 >= bytes.size() ? 0 : ENOSPC;
}

} // namespace

std::optional<std::string> HistoryFolder::append(const std::string& month, std::string_view header,
                                                 std::string_view line) {
    if (!folder_)
        return "there is no home folder";
    makePrivate(*folder_);
    const File file(path(month), O_RDWR | O_APPEND | O_CREAT);
    struct stat status {};
    if (const int error = examine(file.number(), status))
        return wordsFor(path(month), error);
    // What a spreadsheet saved anew is everybody's to read.
    if ((status.st_mode & (S_IRWXG | S_IRWXO)) != 0)
        ::fchmod(file.number(), S_IRUSR | S_IWUSR);
    std::string bytes = before(file.number(), status.st_size, header);
    bytes.append(line).append("\n");
    const int error = writeAtOnce(file.number(), bytes);
    return error == 0 ? std::nullopt : std::optional(wordsFor(path(month), error));
}

HistoryFiles::Content HistoryFolder::read(const std::string& month) {
    if (!folder_)
        return {};
    const File file(path(month), O_RDONLY);
    if (file.number() < 0 && errno == ENOENT)
        return {};
    struct stat status {};
    if (const int error = examine(file.number(), status))
        return {{}, wordsFor(path(month), error)};
    Content content;
    content.bytes.resize(static_cast<std::size_t>(status.st_size));
    std::size_t size = 0;
    ssize_t got = 0;
    while (size < content.bytes.size() &&
           (got = ::read(file.number(), content.bytes.data() + size, content.bytes.size() - size)) != 0) {
        if (got < 0 && errno != EINTR)
            return {{}, wordsFor(path(month), errno)};
        size += got < 0 ? 0 : static_cast<std::size_t>(got);
    }
    content.bytes.resize(size);
    return content;
}

std::optional<std::string> HistoryFolder::removeAll() {
    std::error_code error;
    if (!folder_ || (!fs::exists(*folder_, error) && !error))
        return std::nullopt;
    std::vector<fs::path> months;
    for (fs::directory_iterator entry(*folder_, error), end; !error && entry != end; entry.increment(error))
        if (!numbersIn(entry->path().filename().string(), "0000-00.csv").empty())
            months.push_back(entry->path());
    std::optional<std::string> problem;
    if (error)
        problem = wordsFor(*folder_, error.value());
    for (const fs::path& month : months)
        if (::unlink(month.c_str()) != 0 && errno != ENOENT)
            problem = wordsFor(month.string(), errno);
    // It stays where anything else lies in it.
    ::rmdir(folder_->c_str());
    return problem;
}

} // namespace kelpa
