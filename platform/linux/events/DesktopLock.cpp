#include "platform/linux/events/DesktopLock.h"

#include <utility>

namespace kelpa {

DesktopLock::DesktopLock(EventLoop& loop)
    : edges_([this] { toldLocked_(); }, [this] { toldUnlocked_(); }), screenSavers_(loop, edges_),
      logind_(loop, edges_) {}

void DesktopLock::observe(std::function<void()> locked, std::function<void()> unlocked) {
    toldLocked_ = std::move(locked);
    toldUnlocked_ = std::move(unlocked);
    screenSavers_.start();
    logind_.start();
}

} // namespace kelpa
