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

/// Mouse and modifier-key events on their way to other applications. Mouse events need no permission;
/// modifier keys are seen only once the user has allowed the application to watch the keyboard. While the
/// screen is locked nothing counts: whoever moves the mouse there has not come back yet.
class GlobalActivity final : public ActivityMonitor {
  public:
    explicit GlobalActivity(const DistributedLock& lock) : lock_(lock) {}
    Watch watch(std::function<void()> activity, std::function<void()> lost) override;

  private:
    const DistributedLock& lock_;
};

} // namespace kelpa
