#pragma once

#include "platform/posix/ScreenLock.h"

#include <functional>
#include <set>
#include <string>

namespace kelpa {

/// The screen's lock by what several sources tell of it: the first word of any source counts, and later ones
/// that say the same do not.
class LockEdges {
  public:
    /// Each runs once an edge.
    LockEdges(std::function<void()> locked, std::function<void()> unlocked);

    [[nodiscard]] bool locked() const { return screen_.locked(); }
    /// A source, known by any name of its own, tells what the screen is now.
    void says(const std::string& source, bool locked);
    /// Somebody asked for the screen to be locked. Whoever locks it says so; a request that nobody obeys is
    /// none. It counts at once where a source holds that the screen never stopped being locked.
    void lockRequested();
    /// Somebody unlocks the screen from outside, and no locker refuses that.
    void unlockRequested() { screen_.become(false); }
    /// What a source said last counts no longer: it ended, or cannot be heard. A screen that nobody says is
    /// locked would stay locked for ever otherwise.
    void gone(const std::string& source);

  private:
    ScreenLock screen_;
    std::set<std::string> sayLocked_;
};

} // namespace kelpa
