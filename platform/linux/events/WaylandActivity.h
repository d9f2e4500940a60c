#pragma once

#include "platform/linux/events/ActivitySource.h"
#include "platform/linux/events/ActivitySpell.h"
#include "platform/linux/events/IdleProtocols.h"

#include <list>

namespace kelpa {

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

  private:
    class Seat;
    void came(const WaylandGlobal& global) override;
    void went(std::uint32_t number) override;
    [[nodiscard]] bool chooseProtocol();
    void watch(const WaylandGlobal& global);
    void seatChanged();
    void lost();

    EventLoop& loop_;
    std::uint32_t restMilliseconds_;
    ActivitySpell spell_;
    ActivitySink* sink_ = nullptr;
    std::unique_ptr<WaylandConnection> connection_;
    std::vector<WaylandGlobal> offers_; ///< until one of them is chosen
    std::unique_ptr<IdleProtocol> protocol_;
    std::list<Seat> seats_;
    Subscription globals_;
};

} // namespace kelpa
