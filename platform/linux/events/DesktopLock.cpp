#include "platform/linux/events/DesktopLock.h"

#include <utility>

namespace kelpa {

DesktopLock::DesktopLock(EventLoop& loop, Bus& session, Bus& system)
    : edges_([this] { toldLocked_(); }, [this] { toldUnlocked_(); }), screenSavers_(session, edges_),
      logind_(loop, system, edges_) {}

void DesktopLock::observe(std::function<void()> locked, std::function<void()> unlocked) {
    toldLocked_ = std::move(locked);
    toldUnlocked_ = std::move(unlocked);
    screenSavers_.start();
    logind_.start();
}

} // namespace kelpa
