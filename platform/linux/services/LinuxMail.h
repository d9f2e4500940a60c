#pragma once

#include "platform/linux/services/Launcher.h"
#include "platform/linux/services/Portal.h"
#include "platform/ports/Services.h"

#include <functional>

namespace kelpa {

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
