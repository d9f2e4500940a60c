#pragma once

#include "platform/ports/Ticker.h"
#include "timer/TicktackState.h"

#include <cstdint>

namespace kelpa {

/// What the countdown asks of the program around it.
class TicktackClient {
  public:
    virtual ~TicktackClient() = default;
    [[nodiscard]] virtual TicktackState& workState() = 0;
    [[nodiscard]] virtual TicktackState& breakState() = 0;
    /// The period of `state` runs out in at most `TicktackController::noticeSeconds`; told once a period.
    virtual void periodEndsSoon(const TicktackState& state) = 0;
};

/// Counts one period at a time down, once a second, into the state of work or of breaks. What comes after a
/// period is decided by those who observe the states.
class TicktackController {
  public:
    /// How long before its end a period announces it: long enough to load what the break will show.
    static constexpr std::int64_t noticeSeconds = 10;

    /// Both must outlive the process's last tick. Call before anything else.
    static void wire(TicktackClient& client, TickerSource& tickers);

    static void work(std::int64_t seconds);
    static void break_(std::int64_t seconds);
    /// Ends the running period, if any; the states keep what they last showed.
    static void stop();

  private:
    static void ticktack(std::int64_t seconds, TicktackState& ticktack);
};

} // namespace kelpa
