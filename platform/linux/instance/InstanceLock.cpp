#include "platform/linux/instance/InstanceLock.h"

#include "platform/linux/control/ControlInterface.h"

#include <algorithm>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <fcntl.h>
#include <string_view>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

namespace kelpa {

namespace {

constexpr std::string_view showRequest = "show";
constexpr std::string_view historyRequest = "history";
constexpr std::string_view yieldRequest = "yield";
constexpr std::string_view shownAnswer = "shown";
constexpr std::size_t longestRequest = 16;
constexpr double secondsBetweenTries = 0.1;

const sockaddr* generic(const sockaddr_un& address) {
    return reinterpret_cast<const sockaddr*>(&address);
}

Descriptor makeSocket() {
    return Descriptor(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
}

/// A socket with a name that the kernel chooses, so that it can be answered.
Descriptor makeAsker() {
    Descriptor asker = makeSocket();
    sockaddr_un any{};
    any.sun_family = AF_UNIX;
    if (asker && bind(asker.get(), generic(any), sizeof any.sun_family) != 0)
        return Descriptor();
    return asker;
}

std::string received(int fd, sockaddr_un* from = nullptr, socklen_t* size = nullptr) {
    char text[longestRequest];
    const auto got = recvfrom(fd, text, sizeof text, 0, reinterpret_cast<sockaddr*>(from), size);
    return got > 0 ? std::string(text, static_cast<std::size_t>(got)) : std::string();
}

bool ownFolder(const std::string& path) {
    struct stat info {};
    return lstat(path.c_str(), &info) == 0 && S_ISDIR(info.st_mode) && info.st_uid == geteuid() &&
           (info.st_mode & 0077) == 0;
}

} // namespace

InstanceLock::InstanceLock(const std::string& folder, std::string name)
    : name_(std::move(name)), folder_(open(folder.c_str(), O_PATH | O_DIRECTORY | O_CLOEXEC)) {}

/// The socket's file goes with the lock; the lock's own stays, because another process may be about to lock
/// it.
InstanceLock::~InstanceLock() {
    if (state_ == State::Held && ourFile(lock_.get()))
        unlinkat(folder_.get(), (name_ + ".socket").c_str(), 0);
}

/// A lock on a file that was replaced under its name keeps nobody out.
bool InstanceLock::ourFile(int fd) const {
    struct stat locked {
    }, named{};
    return fstat(fd, &locked) == 0 &&
           fstatat(folder_.get(), (name_ + ".lock").c_str(), &named, AT_SYMLINK_NOFOLLOW) == 0 &&
           locked.st_ino == named.st_ino;
}

InstanceLock::State InstanceLock::take() {
    for (int tries = 0; tries < 10; ++tries) {
        Descriptor file(openat(folder_.get(), (name_ + ".lock").c_str(),
                               O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW, 0600));
        struct stat info {};
        if (!file || fstat(file.get(), &info) != 0)
            return state_ = State::Unavailable;
        if (flock(file.get(), LOCK_EX | LOCK_NB) != 0) {
            held_ = info.st_ino;
            return state_ = errno == EWOULDBLOCK ? State::HeldByAnother : State::Unavailable;
        }
        if (!ourFile(file.get()))
            continue;
        lock_ = std::move(file);
        listen();
        return state_ = State::Held;
    }
    return state_ = State::Unavailable;
}

/// By way of the folder's descriptor, because the folder's path may be longer than a socket's address can be.
sockaddr_un InstanceLock::socketAddress() const {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    const std::string path = "/proc/self/fd/" + std::to_string(folder_.get()) + "/" + name_ + ".socket";
    std::strncpy(address.sun_path, path.c_str(), sizeof address.sun_path - 1);
    return address;
}

/// Whatever lies under the socket's name is left from a holder that is gone. A lock without a socket still
/// locks; it cannot be asked, and other starts will take it over.
void InstanceLock::listen() {
    unlinkat(folder_.get(), (name_ + ".socket").c_str(), 0);
    socket_ = makeSocket();
    const sockaddr_un address = socketAddress();
    if (socket_ && bind(socket_.get(), generic(address), sizeof address) != 0)
        socket_ = Descriptor();
}

bool InstanceLock::send(int from, std::string_view request) const {
    const sockaddr_un address = socketAddress();
    return sendto(from, request.data(), request.size(), MSG_NOSIGNAL, generic(address), sizeof address) >= 0;
}

bool InstanceLock::askHolder(EventLoop& loop, StartWish wish, double seconds) {
    const Descriptor asker = makeAsker();
    if (!asker)
        return false;
    bool shown = false;
    const auto answers =
        loop.watch(asker.get(), [&] { shown = shown || received(asker.get()) == shownAnswer; });
    bool sent = false;
    // The holder may just have begun and have no socket yet, or be on its way out.
    for (double waited = 0; !shown && waited < seconds && !loop.ending(); waited += secondsBetweenTries) {
        sent = sent || send(asker.get(), wish == StartWish::History ? historyRequest : showRequest);
        if (!loop.runUntil([&shown] { return shown; }, secondsBetweenTries) && take() != State::HeldByAnother)
            return false;
    }
    return shown;
}

bool InstanceLock::takeOver() {
    struct stat named {};
    const std::string file = name_ + ".lock";
    if (fstatat(folder_.get(), file.c_str(), &named, AT_SYMLINK_NOFOLLOW) == 0) {
        if (held_ != named.st_ino)
            return take() != State::HeldByAnother;
        // It finds this when it comes to itself again.
        if (const Descriptor asker = makeAsker())
            send(asker.get(), yieldRequest);
        unlinkat(folder_.get(), file.c_str(), 0);
    }
    return take() != State::HeldByAnother;
}

void InstanceLock::serve(EventLoop& loop, InstanceClient& client) {
    if (socket_)
        requests_ = loop.watch(socket_.get(), [this, &client] { readRequest(client); });
}

void InstanceLock::readRequest(InstanceClient& client) {
    sockaddr_un from{};
    socklen_t size = sizeof from;
    const std::string request = received(socket_.get(), &from, &size);
    if (request == showRequest || request == historyRequest) {
        sendto(socket_.get(), shownAnswer.data(), shownAnswer.size(), MSG_NOSIGNAL, generic(from), size);
        client.show(request == historyRequest ? StartWish::History : StartWish::Preferences);
    } else if (request == yieldRequest) {
        client.replaced();
    }
}

std::optional<std::string> lockFolder() {
    const char* runtime = std::getenv("XDG_RUNTIME_DIR");
    if (runtime != nullptr && *runtime == '/' && access(runtime, W_OK | X_OK) == 0)
        return runtime;
    const std::string own = "/tmp/" + std::string(control::service) + "-" + std::to_string(geteuid());
    mkdir(own.c_str(), 0700);
    return ownFolder(own) ? std::optional(own) : std::nullopt;
}

std::string lockName() {
    constexpr std::size_t longest = 40;
    std::string display;
    for (const char* variable : {"DISPLAY", "WAYLAND_DISPLAY"})
        if (const char* value = std::getenv(variable); value != nullptr && display.empty())
            display = value;
    // ":0" and its screen ":0.0" are one display.
    const auto screen = display.find('.', std::min(display.rfind(':'), display.size()));
    display = display.substr(0, screen);
    std::replace(display.begin(), display.end(), '/', '_');
    if (display.size() > longest)
        display.erase(0, display.size() - longest);
    return std::string(control::service) + "-" + display;
}

} // namespace kelpa
