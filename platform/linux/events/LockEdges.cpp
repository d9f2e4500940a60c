#include "platform/linux/events/LockEdges.h"

#include <utility>

namespace kelpa {

LockEdges::LockEdges(std::function<void()> locked, std::function<void()> unlocked)
    : screen_(std::move(locked), std::move(unlocked)) {}

void LockEdges::says(const std::string& source, bool locked) {
    if (locked)
        sayLocked_.insert(source);
    else
        sayLocked_.erase(source);
    screen_.become(locked);
}

void LockEdges::lockRequested() {
    if (!sayLocked_.empty())
        screen_.become(true);
}

void LockEdges::gone(const std::string& source) {
    if (sayLocked_.erase(source) > 0 && sayLocked_.empty())
        screen_.become(false);
}

} // namespace kelpa
