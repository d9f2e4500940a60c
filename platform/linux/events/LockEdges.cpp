#include "platform/linux/events/LockEdges.h"

#include <utility>

namespace kelpa {

LockEdges::LockEdges(std::function<void()> locked, std::function<void()> unlocked)
    : toldLocked_(std::move(locked)), toldUnlocked_(std::move(unlocked)) {}

void LockEdges::says(const std::string& source, bool locked) {
    if (locked)
        sayLocked_.insert(source);
    else
        sayLocked_.erase(source);
    become(locked);
}

void LockEdges::lockRequested() {
    if (!sayLocked_.empty())
        become(true);
}

void LockEdges::gone(const std::string& source) {
    if (sayLocked_.erase(source) > 0 && sayLocked_.empty())
        become(false);
}

void LockEdges::become(bool locked) {
    if (locked == locked_)
        return;
    locked_ = locked;
    locked ? toldLocked_() : toldUnlocked_();
}

} // namespace kelpa
