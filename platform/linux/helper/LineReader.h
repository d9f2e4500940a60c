#pragma once

#include "platform/linux/helper/Message.h"

#include <cstddef>
#include <functional>
#include <string>

namespace kelpa::wire {

/// Reads messages from a descriptor. What the other side sends is not trusted: a damaged line is left out,
/// one that is too long is skipped to its end, and neither takes more memory than one line may have.
class LineReader {
  public:
    static constexpr std::size_t longestLine = 524288;
    enum class State { Open, Closed };

    /// The caller keeps owning `fd`.
    explicit LineReader(int fd) : fd_(fd) {}

    /// Takes what can be read now without waiting and hands over every message in it; of a flood it takes
    /// some and leaves the rest for the next call. `Closed` when the other end is gone; a line that it did
    /// not finish is dropped. `message` must not destroy the reader.
    State read(const std::function<void(const Message&)>& message);
    /// Lines that were no messages.
    [[nodiscard]] std::size_t damaged() const { return damaged_; }

  private:
    void take(std::string_view bytes, const std::function<void(const Message&)>& message);
    void finishLine(const std::function<void(const Message&)>& message);

    int fd_;
    std::string line_;
    bool tooLong_ = false;
    std::size_t damaged_ = 0;
};

} // namespace kelpa::wire
