#pragma once

#include "platform/linux/services/Portal.h"

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
    /// The same for a program that prints to `output`, which stays the caller's: in English, with nothing to
    /// read, and complaining to nobody. Gives the process id, which is its own until `ended`; 0 where there
    /// is no such program.
    int start(std::vector<std::string> command, int output, Ended ended);

  private:
    static constexpr int noOutput = -1;
    EventLoop& loop_;
    std::list<Subscription> running_; ///< one for each program that has not ended
};

/// Hands a message to whatever mail program the user has, through `xdg-email`, or through the desktop in a
/// sandbox. Where there is neither, nothing happens.
class LinuxMail final : public MailComposer {
  public:
    /// `portal` gives the desktop's portal in a sandbox and null outside.
    LinuxMail(EventLoop& loop, std::function<Portal*()> portal)
        : launcher_(loop), portal_(std::move(portal)) {}

    void compose(const Mail& mail) override;

  private:
    Launcher launcher_;
    std::function<Portal*()> portal_;
};

} // namespace kelpa
