#pragma once

#import "platform/macos/DistributedLock.h"

namespace kelpa {

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
