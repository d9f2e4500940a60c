#pragma once

#include <functional>

namespace kelpa {

/// Screen lock and unlock as the desktop tells of them, each edge once.
class LockNotifications {
  public:
    virtual ~LockNotifications() = default;
    /// Called once; both run on the main thread for the rest of the process.
    virtual void observe(std::function<void()> locked, std::function<void()> unlocked) = 0;
};

/// Mouse and modifier-key activity that goes to other programs.
class ActivityMonitor {
  public:
    virtual ~ActivityMonitor() = default;
    /// Called once; `activity` runs on the main thread for the rest of the process.
    virtual void observe(std::function<void()> activity) = 0;
};

} // namespace kelpa
