#pragma once

#include "platform/linux/EventLoop.h"

#include <functional>
#include <list>
#include <string>
#include <vector>

namespace kelpa {

/// Starts programs of the desktop and waits for none of them.
class Launcher {
  public:
    explicit Launcher(EventLoop& loop) : loop_(loop) {}

    /// Told from the main loop, once: whether the program ended well.
    using Ended = std::function<void(bool well)>;
    /// Looks for the first word on the PATH. False where there is no such program; `ended` is not called
    /// then.
    bool run(std::vector<std::string> command, Ended ended = nullptr);

  private:
    EventLoop& loop_;
    std::list<Subscription> running_; ///< one for each program that has not ended
};

} // namespace kelpa
