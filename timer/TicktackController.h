#pragma once

#include "base/Published.h"
#include "platform/ports/Timers.h"
#include "prefs/App.h"

#include <cstdint>

namespace kelpa {

/// A countdown as others see it.
struct TicktackState {
    Published<std::string> timeString; ///< the time left of the current period
    Published<bool> timesUp{false}; ///< from the tick at which the period ran out until the next one starts
};

/// Counts one period at a time down, once a second, into the state of work or of breaks. What comes after a
/// period is decided by those who observe the states.
class TicktackController {
  public:
    /// How long before its end a work period has the break's windows prepared: long enough to load what they
    /// show.
    static constexpr std::int64_t noticeSeconds = 10;

    /// Both must outlive the process's last tick. Call before anything else.
    static void wire(App& app, TickerSource& tickers);

    static void work(std::int64_t seconds);
    static void break_(std::int64_t seconds);
    /// How many seconds of the running period have passed; of the last one, when it was stopped.
    [[nodiscard]] static std::int64_t counted();
    /// Ends the running period, if any; the states keep what they last showed.
    static void stop();

  private:
    static void ticktack(std::int64_t seconds, TicktackState& ticktack);
};

} // namespace kelpa
