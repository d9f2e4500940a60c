#include "platform/linux/helper/HelperChild.h"

#include "platform/linux/Descriptors.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <poll.h>
#include <sys/prctl.h>
#include <sys/syscall.h>
#include <sys/wait.h>
#include <system_error>
#include <unistd.h>

namespace kelpa {

namespace {

constexpr int helperDescriptor = 3;
/// A helper that is well ends within a few milliseconds of being asked.
constexpr int patienceMilliseconds = 300;

/// A child starts with the signals of a fresh program, whatever ours are set to.
void resetSignals() {
    struct sigaction usual {};
    usual.sa_handler = SIG_DFL;
    for (int number = 1; number < NSIG; ++number)
        ::sigaction(number, &usual, nullptr);
    sigset_t none;
    sigemptyset(&none);
    ::sigprocmask(SIG_SETMASK, &none, nullptr);
}

/// False where the maker is gone already, of which no signal would come any more. Its id is compared, because
/// orphans do not always go to process 1.
bool dieWith(pid_t maker) {
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    return ::getppid() == maker;
}

/// A duplicate stays open in the new program; the original does not.
bool handOver(int descriptor) {
    if (descriptor == helperDescriptor)
        return ::fcntl(descriptor, F_SETFD, 0) == 0;
    return ::dup2(descriptor, helperDescriptor) == helperDescriptor;
}

/// Runs in the child, where nothing may be called that another thread could have been at work in.
[[noreturn]] void become(char* const* arguments, int descriptor, pid_t maker, int report) {
    resetSignals();
    if (dieWith(maker) && handOver(descriptor))
        ::execv(arguments[0], arguments);
    const int error = errno;
    (void)!::write(report, &error, sizeof error);
    ::_exit(EXIT_FAILURE);
}

/// What the child could not do; 0 when it became the other program, which closes its end.
int reportedError(int fd) {
    int error = 0;
    ssize_t count = 0;
    do
        count = ::read(fd, &error, sizeof error);
    while (count < 0 && errno == EINTR);
    return count == static_cast<ssize_t>(sizeof error) ? error : 0;
}

[[noreturn]] void refuse(int error, const std::string& path) {
    throw std::system_error(error, std::generic_category(), path);
}

bool endsWithin(const Descriptor& process, int milliseconds) {
    pollfd ended{process.get(), POLLIN, 0};
    return ::poll(&ended, 1, milliseconds) > 0;
}

} // namespace

int startHelper(const std::string& path, int descriptor) {
    std::array<int, 2> ends{};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        refuse(errno, path);
    const Descriptor reading(ends[0]);
    Descriptor writing(ends[1]);
    std::string name = path;
    const std::array<char*, 2> arguments{name.data(), nullptr};
    const pid_t maker = ::getpid();
    const pid_t pid = ::fork();
    if (pid == 0)
        become(arguments.data(), descriptor, maker, writing.get());
    if (pid < 0)
        refuse(errno, path);
    writing.close();
    if (const int error = reportedError(reading.get()); error != 0) {
        ::waitpid(pid, nullptr, 0);
        refuse(error, path);
    }
    return pid;
}

void endHelper(int pid) {
    const Descriptor process(static_cast<int>(::syscall(SYS_pidfd_open, pid, 0)));
    if (process.get() >= 0 && !endsWithin(process, patienceMilliseconds)) {
        ::kill(pid, SIGKILL);
        endsWithin(process, patienceMilliseconds);
    } else if (process.get() < 0) {
        ::kill(pid, SIGKILL);
    }
    ::waitpid(pid, nullptr, WNOHANG);
}

} // namespace kelpa
