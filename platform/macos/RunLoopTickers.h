#pragma once

#include "platform/ports/Timers.h"

namespace kelpa {

/// Timers of the main run loop in its common modes, so that they fire while a menu is open or a window is
/// dragged. Ticks come `speed` times as fast as real time.
class RunLoopTickers final : public TickerSource {
  public:
    explicit RunLoopTickers(double speed = 1.0) : speed_(speed) {}
    std::unique_ptr<Ticker> makeTicker(double interval) override;

  private:
    double speed_;
};

} // namespace kelpa
