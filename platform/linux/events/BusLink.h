#pragma once

#include "platform/linux/status/SessionBus.h"

#include <functional>
#include <memory>

namespace kelpa {

/// A connection to a bus that is made again when the bus comes back, also one that was not there at first.
class BusLink {
  public:
    enum class Kind { Session, System };

    /// Both run from the main loop or from `start`. `opened` makes its matches and asks its questions; what
    /// belongs to the bus is to be dropped in `lost`. The loop outlives the link.
    BusLink(EventLoop& loop, Kind kind, std::function<void(SessionBus& bus)> opened,
            std::function<void()> lost);
    BusLink(const BusLink&) = delete;
    BusLink& operator=(const BusLink&) = delete;

    /// Opens the bus now, or later.
    void start() { open(); }

  private:
    void open();
    void lose();
    void tryLater();

    EventLoop& loop_;
    Kind kind_;
    std::function<void(SessionBus& bus)> opened_;
    std::function<void()> lost_;
    std::unique_ptr<SessionBus> bus_; ///< null while there is none
    Subscription loss_;
    Subscription later_;
    double pause_;
    double openedAt_ = 0;
};

} // namespace kelpa
