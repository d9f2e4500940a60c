#include "platform/linux/helper/LineWriter.h"

#include "platform/linux/helper/Message.h"

#include <cerrno>
#include <sys/socket.h>

namespace kelpa::wire {

LineWriter::State LineWriter::send(std::initializer_list<std::string_view> fields) {
    if (broken_)
        return State::Broken;
    encode(fields, pending_);
    return flush();
}

LineWriter::State LineWriter::flush() {
    while (!broken_ && !pending_.empty()) {
        const ssize_t count = ::send(fd_, pending_.data(), pending_.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
        if (count >= 0)
            pending_.erase(0, static_cast<std::size_t>(count));
        else if (errno == EAGAIN || errno == EWOULDBLOCK || errno == ENOBUFS)
            break;
        else if (errno != EINTR)
            broken_ = true;
    }
    broken_ = broken_ || pending_.size() > mostPending;
    if (broken_)
        return State::Broken;
    return pending_.empty() ? State::Idle : State::Pending;
}

} // namespace kelpa::wire
