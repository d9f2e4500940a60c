#include "platform/linux/busy/CommandOutput.h"

#include "platform/linux/Descriptors.h"

#include <array>
#include <cerrno>
#include <csignal>
#include <fcntl.h>
#include <memory>
#include <unistd.h>
#include <utility>

namespace kelpa {

namespace {

/// One program that prints.
struct Reading {
    Descriptor end;
    std::function<void(const std::string&)> ended;
    std::shared_ptr<int> pid = std::make_shared<int>(0); ///< 0 where it does not run
    std::string text = {};
    Subscription readable = {};

    /// Takes what is there. False once no more comes, or more than is wanted.
    bool take() {
        std::array<char, 4096> part{};
        const ssize_t count = ::read(end.get(), part.data(), part.size());
        if (count < 0)
            return errno == EINTR || errno == EAGAIN;
        text.append(part.data(), static_cast<std::size_t>(count));
        if (text.size() <= mostOutput)
            return count > 0;
        text.clear();
        return false;
    }
    void stop() {
        readable.cancel();
        if (*pid > 0)
            ::kill(*pid, SIGKILL);
    }
};

} // namespace

Subscription readOutput(EventLoop& loop, Launcher& launcher, std::vector<std::string> command,
                        std::function<void(const std::string& text)> ended) {
    std::array<int, 2> ends{-1, -1};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0)
        return loop.afterReal(0, [ended = std::move(ended)] { ended({}); });
    const Descriptor writing(ends[1]);
    ::fcntl(ends[0], F_SETFL, O_NONBLOCK);
    auto reading = std::make_shared<Reading>(Reading{Descriptor(ends[0]), std::move(ended)});
    *reading->pid =
        launcher.start(std::move(command), writing.get(), [pid = reading->pid](bool) { *pid = 0; });
    reading->readable = loop.watch(reading->end.get(), [raw = reading.get()] {
        if (raw->take())
            return;
        raw->stop();
        const auto told = std::move(raw->ended);
        const std::string text = std::move(raw->text);
        told(text);
    });
    return Subscription([reading] { reading->stop(); });
}

} // namespace kelpa
