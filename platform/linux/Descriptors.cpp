#include "platform/linux/Descriptors.h"

#include <cerrno>
#include <fcntl.h>
#include <filesystem>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kelpa {

namespace {

/// About twice what the program, or a helper of it, was seen to open at most.
constexpr unsigned long needed = 32;

/// The system counts what a program was given open as well.
unsigned long openAlready() {
    std::error_code none;
    unsigned long count = 0;
    for (std::filesystem::directory_iterator at("/proc/self/fd", none), end; !none && at != end;
         at.increment(none))
        ++count;
    return count;
}

bool waitsForReaders(int stream) {
    struct stat info {};
    return isatty(stream) == 1 || (fstat(stream, &info) == 0 && S_ISFIFO(info.st_mode));
}

/// The way that it was opened belongs to all who were given it, so this is an opening of our own.
void openAnew(int stream, int flags) {
    const std::string same = "/proc/self/fd/" + std::to_string(stream);
    if (const Descriptor ours{open(same.c_str(), flags)})
        dup2(ours.get(), stream);
}

} // namespace

void openStandardStreams() {
    for (const int stream : {STDIN_FILENO, STDOUT_FILENO, STDERR_FILENO})
        if (fcntl(stream, F_GETFD) < 0 && errno == EBADF)
            // The lowest number that is free, which is this one.
            (void)!open("/dev/null", O_RDWR);
}

void printWithoutWaiting() {
    for (const int stream : {STDOUT_FILENO, STDERR_FILENO})
        if (waitsForReaders(stream))
            openAnew(stream, O_WRONLY | O_NONBLOCK | O_NOCTTY | O_CLOEXEC);
}

std::optional<std::string> tooFewDescriptors() {
    rlimit limit{};
    if (getrlimit(RLIMIT_NOFILE, &limit) != 0 || limit.rlim_cur >= needed + openAlready())
        return std::nullopt;
    return "only " + std::to_string(limit.rlim_cur) +
           " files may be open at a time, which is too few (ulimit -n); " +
           std::to_string(needed + openAlready()) + " are enough";
}

} // namespace kelpa
