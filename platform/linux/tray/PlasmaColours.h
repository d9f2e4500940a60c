#pragma once

#include "platform/linux/EventLoop.h"
#include "platform/linux/bus/Bus.h"

#include <functional>

namespace kelpa {

/// Tells when KDE Plasma has taken on other colours. Its panel draws an item's icon in those that it had when
/// it was last told of the icon, which on a dark panel may be the dark ones.
class PlasmaColours {
  public:
    static constexpr double patience = 1; ///< real seconds in which the panel has changed as well

    /// The loop outlives the object. `changed` runs on it, once for changes that come together.
    PlasmaColours(EventLoop& loop, std::function<void()> changed)
        : loop_(loop), changed_(std::move(changed)) {}

    /// `stop` is called before the bus closes.
    void start(const Bus& bus);
    void stop();

  private:
    void announced(sd_bus_message*);

    EventLoop& loop_;
    std::function<void()> changed_;
    BusSlot match_;
    Subscription waiting_;
};

} // namespace kelpa
