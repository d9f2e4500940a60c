#pragma once

#include "platform/ports/DesktopEvents.h"

namespace kelpa {

/// There is no source of lock and unlock on this desktop yet, so neither is ever told of.
class SilentLock final : public LockNotifications {
  public:
    void observe(std::function<void()>, std::function<void()>) override {}
};

} // namespace kelpa
