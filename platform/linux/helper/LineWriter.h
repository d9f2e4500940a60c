#pragma once

#include <cstddef>
#include <initializer_list>
#include <string>
#include <string_view>

namespace kelpa::wire {

/// Writes messages to a socket and never waits: what the other side does not take at once is kept, up to a
/// limit, and tried again with the next message or `flush()`.
class LineWriter {
  public:
    static constexpr std::size_t mostPending = 1048576;
    enum class State {
        Idle,    ///< everything is on its way
        Pending, ///< some is kept: call `flush()` again in a while
        Broken,  ///< the other side is gone or has not read for far too long; nothing more is sent
    };

    /// The caller keeps owning `fd`.
    explicit LineWriter(int fd) : fd_(fd) {}

    /// Uses memory that it already has, once a message of this size was sent before.
    State send(std::initializer_list<std::string_view> fields);
    State flush();

  private:
    int fd_;
    std::string pending_;
    bool broken_ = false;
};

} // namespace kelpa::wire
