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
    enum class Watch {
        Working,
        None, ///< nothing here tells of activity, for now
    };
    virtual ~ActivityMonitor() = default;
    /// Called once; both run on the main thread for the rest of the process: `activity` at each event, also
    /// where there was nothing to watch at first, and `lost` when nothing will tell of activity any more.
    virtual Watch watch(std::function<void()> activity, std::function<void()> lost) = 0;
};

} // namespace kelpa
