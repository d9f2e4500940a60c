#pragma once

#include "platform/linux/display/OwnWindows.h"
#include "platform/linux/events/ActivityGate.h"
#include "platform/linux/events/DesktopLock.h"

namespace kelpa {

/// Open while somebody can work at the desk.
class DeskGate final : public ActivityGate {
  public:
    /// Both outlive the gate.
    DeskGate(const DesktopLock& lock, const OwnWindows& windows) : lock_(lock), windows_(windows) {}
    [[nodiscard]] bool open() const override { return !lock_.locked() && !windows_.coverEveryScreen(); }

  private:
    const DesktopLock& lock_;
    const OwnWindows& windows_;
};

} // namespace kelpa
