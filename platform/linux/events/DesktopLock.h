#pragma once

#include "platform/linux/bus/Bus.h"
#include "platform/linux/events/LogindSession.h"
#include "platform/ports/System.h"
#include "platform/posix/ScreenLock.h"

#include <functional>
#include <map>
#include <memory>
#include <set>
#include <string>
#include <vector>

namespace kelpa {

class X11Connection;

/// The screen's lock by what several sources say of it: the first source that says something new counts, and
/// later ones that say the same do not.
class LockEdges {
  public:
    /// Each runs once an edge.
    LockEdges(std::function<void()> locked, std::function<void()> unlocked)
        : screen_(std::move(locked), std::move(unlocked)) {}

    [[nodiscard]] bool locked() const { return screen_.locked(); }
    /// A source, known by any name of its own, says what the screen is now.
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

/// Watches the lock of a screen saver that tells of itself on no bus, but by a property of the X server's
/// root window: xscreensaver. Calls `says` when that changes, from the main loop, and at once if the screen
/// is locked already; `gone` when the screen saver ended without having unlocked the screen, so that its word
/// counts no longer. Until what is given is destroyed, which the connection outlives.
[[nodiscard]] std::shared_ptr<void>
watchX11Lock(X11Connection& connection, std::function<void(bool locked)> says, std::function<void()> gone);

/// Lock and unlock of the screen, from everything on a Linux desktop that may tell of them: the screen savers
/// of the session bus, which are whoever emits `ActiveChanged` of one of their interfaces, under whatever
/// name and path; logind, with requests to lock and unlock the user's own session and whether it is locked;
/// and the one that tells the X server alone.
class DesktopLock final : public LockNotifications, private BusClient, private LogindSessionClient {
  public:
    /// Loop, buses and connection outlive the object. `x11` is null where the desktop is no X server's.
    DesktopLock(EventLoop& loop, Bus& session, Bus& system, X11Connection* x11 = nullptr);
    DesktopLock(const DesktopLock&) = delete;
    DesktopLock& operator=(const DesktopLock&) = delete;

    void observe(std::function<void()> locked, std::function<void()> unlocked) override;
    [[nodiscard]] bool locked() const { return edges_.locked(); }

  private:
    void busOpened() override;
    void busLost() override;
    void saverChanged(sd_bus_message* signal);
    void saverAnswered(sd_bus_message* reply);
    void saverSays(const std::string& sender, bool locked);
    void saverGone(const std::string& sender);
    void propertyRead(bool locked) override;
    void propertyLost() override;
    void signalled(sd_bus_message* signal) override;

    std::function<void()> locked_;
    std::function<void()> unlocked_;
    LockEdges edges_;
    EventLoop& loop_;
    Bus& bus_;
    Bus& system_;
    std::vector<BusSlot> slots_; ///< for each kind of screen saver, what listens to it and what asks it
    /// The bus names of the screen savers that say that the screen is locked, each watched for its end.
    std::map<std::string, NameOwner> lockedSavers_;
    bool hint_ = false; ///< logind's, when it was read last
    X11Connection* x11_;
    // Once it observes.
    Subscription joined_;
    std::unique_ptr<BusClient> logind_;
    std::shared_ptr<void> x11Lock_;
};

} // namespace kelpa
