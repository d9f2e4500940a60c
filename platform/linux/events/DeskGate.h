#pragma once

#include "platform/linux/events/ActivityGate.h"
#include "platform/linux/windows/OwnWindows.h"

namespace kelpa {

/// Open while the desk is not covered by a break.
class DeskGate final : public ActivityGate {
  public:
    /// The windows outlive the gate.
    explicit DeskGate(const OwnWindows& windows) : windows_(windows) {}
    [[nodiscard]] bool open() const override { return !windows_.coverEveryScreen(); }

  private:
    const OwnWindows& windows_;
};

} // namespace kelpa
