#pragma once

#include "platform/ports/System.h"

namespace kelpa {

/// Lock and unlock as the login window tells of them to all applications of the user.
class DistributedLock final : public LockNotifications {
  public:
    void observe(std::function<void()> locked, std::function<void()> unlocked) override;
    /// By what was told last; a screen of which nothing was told yet is not locked.
    [[nodiscard]] bool locked() const;
};

} // namespace kelpa
