#pragma once

#include <functional>
#include <optional>
#include <utility>

namespace kelpa {

/// Makes one lock and one unlock of what a desktop tells of its screen, however often it says the same. The
/// first unlock that is told counts although no lock was heard: what locked the screen before the start may
/// have told nobody. From then on an unlock counts only after a lock. The answer to a question is news only
/// where it says that the screen is locked: whoever asks keeps the other to itself.
class ScreenLock {
  public:
    /// Each runs once an edge, from within `become`.
    ScreenLock(std::function<void()> locked, std::function<void()> unlocked)
        : toldLocked_(std::move(locked)), toldUnlocked_(std::move(unlocked)) {}

    /// A screen of which nothing was told yet is not locked.
    [[nodiscard]] bool locked() const { return told_.value_or(false); }
    void become(bool locked) {
        if (told_ == locked)
            return;
        told_ = locked;
        locked ? toldLocked_() : toldUnlocked_();
    }

  private:
    std::function<void()> toldLocked_;
    std::function<void()> toldUnlocked_;
    std::optional<bool> told_;
};

} // namespace kelpa
