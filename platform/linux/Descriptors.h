#pragma once

#include <optional>
#include <string>
#include <unistd.h>
#include <utility>

namespace kelpa {

/// Owns a file descriptor, or none.
class Descriptor {
  public:
    explicit Descriptor(int fd = -1) : fd_(fd) {}
    Descriptor(Descriptor&& other) noexcept : fd_(std::exchange(other.fd_, -1)) {}
    Descriptor& operator=(Descriptor&& other) noexcept {
        std::swap(fd_, other.fd_);
        return *this;
    }
    ~Descriptor() { close(); }
    [[nodiscard]] int get() const { return fd_; }
    explicit operator bool() const { return fd_ >= 0; }
    void close() {
        if (fd_ >= 0)
            ::close(std::exchange(fd_, -1));
    }

  private:
    int fd_;
};

/// Opens on /dev/null what is closed of standard input, output and error: another file would get the number,
/// and everything that is printed. To be called before anything else opens a file.
void openStandardStreams();

/// Has what is printed into a pipe or onto a terminal dropped while nobody takes it, for a reader who stands
/// still must not hold the program up. Other programs that print there are not touched.
void printWithoutWaiting();

/// Why the program cannot open as many files as it and its windows need, as a sentence without its full stop;
/// nothing when it can.
[[nodiscard]] std::optional<std::string> tooFewDescriptors();

} // namespace kelpa
