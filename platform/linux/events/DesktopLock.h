#pragma once

#include "platform/linux/bus/Bus.h"
#include "platform/linux/events/LogindSession.h"
#include "platform/ports/System.h"
#include "platform/posix/ScreenLock.h"

#include <functional>
#include <map>
#include <set>
#include <string>
#include <vector>

namespace kelpa {

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

/// The screen savers of the session bus, as sources of lock and unlock: whoever emits `ActiveChanged` of one
/// of their interfaces is one, under whatever name and path.
class ScreenSaverLock final : private BusClient {
  public:
    /// Both outlive the source.
    ScreenSaverLock(Bus& bus, LockEdges& edges) : bus_(bus), edges_(edges) {}
    void start() { joined_ = bus_.join(*this); }

  private:
    void busOpened() override;
    void busLost() override;
    void changed(sd_bus_message* signal);
    void answered(sd_bus_message* reply);
    void says(const std::string& sender, bool locked);
    void gone(const std::string& sender);

    Bus& bus_;
    LockEdges& edges_;
    std::vector<BusSlot> slots_; ///< for each kind of screen saver, what listens to it and what asks it
    /// The bus names of those that say that the screen is locked, and what watches each for its end.
    std::map<std::string, NameOwner> locked_;
    Subscription joined_;
};

/// logind as a source: requests to lock and unlock the user's own session, and whether it is locked.
class LogindLock final : private LogindSessionClient {
  public:
    /// All outlive the source.
    LogindLock(EventLoop& loop, Bus& system, LockEdges& edges)
        : edges_(edges), session_(loop, system, "LockedHint", *this) {}
    void start() { session_.start(); }

  private:
    void propertyRead(bool locked) override;
    void propertyLost() override;
    void signalled(sd_bus_message* signal) override;

    LockEdges& edges_;
    bool hint_ = false; ///< what it was when it was read last
    LogindSession session_;
};

/// Lock and unlock of the screen, from everything on a Linux desktop that may tell of them.
class DesktopLock final : public LockNotifications {
  public:
    /// Loop and buses outlive the object.
    DesktopLock(EventLoop& loop, Bus& session, Bus& system)
        : edges_([this] { locked_(); }, [this] { unlocked_(); }), screenSavers_(session, edges_),
          logind_(loop, system, edges_) {}
    void observe(std::function<void()> locked, std::function<void()> unlocked) override;
    [[nodiscard]] bool locked() const { return edges_.locked(); }

  private:
    std::function<void()> locked_;
    std::function<void()> unlocked_;
    LockEdges edges_;
    ScreenSaverLock screenSavers_;
    LogindLock logind_;
};

} // namespace kelpa
