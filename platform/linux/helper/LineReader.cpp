#include "platform/linux/helper/LineReader.h"

#include <array>
#include <cerrno>
#include <sys/socket.h>

namespace kelpa::wire {

namespace {

/// A side that never stops writing must not keep us from everything else.
constexpr int mostRounds = 64;
constexpr std::size_t usualLine = 65536;

} // namespace

LineReader::State LineReader::read(const std::function<void(const Message&)>& message) {
    std::array<char, 4096> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by recv
    for (int round = 0; round < mostRounds;) {
        const ssize_t count = ::recv(fd_, buffer.data(), buffer.size(), MSG_DONTWAIT);
        if (count > 0) {
            take({buffer.data(), static_cast<std::size_t>(count)}, message);
            ++round;
        } else if (count == 0 || errno != EINTR) {
            return count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK) ? State::Open : State::Closed;
        }
    }
    return State::Open;
}

void LineReader::take(std::string_view bytes, const std::function<void(const Message&)>& message) {
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        if (line_.size() + end > longestLine)
            tooLong_ = true;
        if (tooLong_)
            line_.clear();
        else
            line_.append(bytes.substr(0, end));
        if (end == bytes.size())
            return;
        finishLine(message);
        bytes.remove_prefix(end + 1);
    }
}

void LineReader::finishLine(const std::function<void(const Message&)>& message) {
    const auto decoded = tooLong_ ? std::nullopt : decode(line_);
    line_.clear();
    // One long message must not take its room for the rest of the day.
    if (line_.capacity() > usualLine)
        line_.shrink_to_fit();
    tooLong_ = false;
    if (decoded)
        message(*decoded);
    else
        ++damaged_;
}

} // namespace kelpa::wire
