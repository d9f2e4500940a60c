#pragma once

#include "platform/linux/EventLoop.h"
#include "platform/linux/services/Portal.h"
#include "platform/ports/Services.h"

#include <functional>
#include <list>

namespace kelpa {

/// Hands a message to whatever mail program the user has, through `xdg-email`, or through the desktop in a
/// sandbox. Where there is neither, nothing happens.
class LinuxMail final : public MailComposer {
  public:
    /// `portal` gives the desktop's portal in a sandbox and null outside.
    LinuxMail(EventLoop& loop, std::function<Portal*()> portal) : loop_(loop), portal_(std::move(portal)) {}

    void compose(const Mail& mail) override;

  private:
    void watch(int pid);

    EventLoop& loop_;
    std::function<Portal*()> portal_;
    std::list<Subscription> running_; ///< one for each composer that has not ended
};

} // namespace kelpa
