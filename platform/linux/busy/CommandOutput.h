#pragma once

#include "platform/linux/services/Launcher.h"

#include <functional>
#include <string>
#include <vector>

namespace kelpa {

/// Reads what programs print, in English, and waits for none of them.
class CommandOutput {
  public:
    /// What a program prints beyond this is not read; it is killed, and counts as having printed nothing.
    static constexpr std::size_t mostBytes = 1 << 20;

    /// The loop outlives the object.
    explicit CommandOutput(EventLoop& loop) : loop_(loop), launcher_(loop) {}

    /// Starts the program of that name and calls `ended` once, from the main loop, with all that it printed
    /// until it closed its standard output: nothing where it could not be started. The handle, which may end
    /// inside of `ended`, kills it.
    Subscription read(std::vector<std::string> command, std::function<void(const std::string& text)> ended);

  private:
    EventLoop& loop_;
    Launcher launcher_;
};

} // namespace kelpa
