#pragma once

#include "platform/linux/events/LogindLock.h"
#include "platform/linux/events/ScreenSaverLock.h"
#include "platform/ports/DesktopEvents.h"

namespace kelpa {

/// Lock and unlock of the screen, from everything on a Linux desktop that may tell of them.
class DesktopLock final : public LockNotifications {
  public:
    /// Loop and buses outlive the object.
    DesktopLock(EventLoop& loop, Bus& session, Bus& system);
    void observe(std::function<void()> locked, std::function<void()> unlocked) override;
    [[nodiscard]] bool locked() const { return edges_.locked(); }

  private:
    std::function<void()> toldLocked_;
    std::function<void()> toldUnlocked_;
    LockEdges edges_;
    ScreenSaverLock screenSavers_;
    LogindLock logind_;
};

} // namespace kelpa
