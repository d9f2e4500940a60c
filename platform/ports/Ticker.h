#pragma once

#include "base/Subscription.h"

#include <functional>
#include <memory>

namespace kelpa {

/// A repeating timer on the main loop that keeps firing while a menu is open or a window is dragged.
class Ticker {
  public:
    virtual ~Ticker() = default;
    /// Seconds between two ticks.
    [[nodiscard]] virtual double interval() const = 0;
    /// Starts a phase of its own: the first tick comes one interval from now. Ticks that were missed are
    /// dropped. The callback may cancel its own subscription.
    virtual Subscription connect(std::function<void()> tick) = 0;
};

class TickerSource {
  public:
    virtual ~TickerSource() = default;
    /// A ticker of `interval` seconds without tolerance. The caller owns it; it must not outlive the source.
    virtual std::unique_ptr<Ticker> makeTicker(double interval) = 0;
};

} // namespace kelpa
