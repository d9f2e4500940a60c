#pragma once

#include "platform/linux/display/WaylandConnection.h"
#include "platform/linux/events/DesktopActivity.h"

#include <list>

namespace kelpa {

struct IdleProtocol;

/// Whoever uses mouse, keyboard or anything else of a Wayland compositor's seats, by the compositor's idle
/// notifications. They do not tell one device from another, so that every key counts as well; and they hold
/// that somebody is there while a program keeps the screen awake, as players do.
class WaylandActivity final : public ActivitySource, private WaylandGlobals {
  public:
    /// Loop and windows outlive the source.
    WaylandActivity(EventLoop& loop, const OwnWindows& windows, double speed);
    ~WaylandActivity() override;

    [[nodiscard]] std::string name() const override;
    Start start(ActivitySink& sink) override;

    class Seat;

  private:
    void came(const WaylandGlobal& global) override;
    void went(std::uint32_t number) override;
    [[nodiscard]] bool chooseProtocol();
    void watch(const WaylandGlobal& global);
    void seatChanged();
    void lost();

    EventLoop& loop_;
    std::uint32_t restMilliseconds_; ///< real ones
    ActivitySpell spell_;
    ActivitySink* sink_ = nullptr;
    std::unique_ptr<WaylandConnection> connection_;
    std::vector<WaylandGlobal> offers_;      ///< until one of them is chosen
    const IdleProtocol* protocol_ = nullptr; ///< the best that the compositor speaks; null before the start
    void* manager_ = nullptr;                ///< the compositor's end of it
    Subscription managerEnd_;
    std::list<Seat> seats_;
    Subscription globals_;
};

} // namespace kelpa
