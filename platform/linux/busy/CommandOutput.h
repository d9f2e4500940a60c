#pragma once

#include "platform/linux/EventLoop.h"

#include <functional>
#include <list>
#include <memory>
#include <string>
#include <vector>

namespace kelpa {

/// Whether the PATH leads to a program of this name.
[[nodiscard]] bool isOnPath(const std::string& program);

/// Reads what programs print, in English, and waits for none of them.
class CommandOutput {
  public:
    /// What a program prints beyond this is not read; it is killed, and counts as having printed nothing.
    static constexpr std::size_t mostBytes = 1 << 20;

    /// The loop outlives the object.
    explicit CommandOutput(EventLoop& loop) : loop_(loop) {}
    ~CommandOutput();
    CommandOutput(const CommandOutput&) = delete;
    CommandOutput& operator=(const CommandOutput&) = delete;

    /// Starts the program of that name and calls `ended` once, from the main loop, with all that it printed
    /// until it closed its standard output: nothing where it could not be started. The handle, which may end
    /// inside of `ended`, kills it.
    Subscription read(std::vector<std::string> command, std::function<void(const std::string& text)> ended);

  private:
    struct Child {
        std::shared_ptr<int> pid;
        Subscription end;
    };
    void keepUntilItEnds(const std::shared_ptr<int>& pid);

    EventLoop& loop_;
    std::list<Child> children_; ///< those that have not ended
};

} // namespace kelpa
