#include "timer/TicktackController.h"

#include "base/Checked.h"
#include "base/Text.h"
#include "logging/SharedLogger.h"

#include <memory>

namespace kelpa {

namespace {

constexpr double tickSeconds = 1.0;

struct Shared {
    TicktackClient& client;
    TickerSource& tickers;
    std::unique_ptr<Ticker> timer =
        {}; ///< made on first use and then kept: each connection has its own phase
    Subscription cancellable = {};
};

std::unique_ptr<Shared> shared;

Shared& the() {
    if (!shared)
        fatalError("The countdown was used before the program was set up");
    return *shared;
}

Ticker& timer() {
    if (!the().timer)
        the().timer = the().tickers.makeTicker(tickSeconds);
    return *the().timer;
}

constexpr LogPlace startPlace = {"TicktackController", "ticktack(with:ticktack:)"};

/// The running period. It lives in the tick's callback and dies with the subscription.
struct Period {
    std::int64_t remaining;
    std::int64_t full;
    TicktackState& state;

    void tick() {
        remaining = checkedSubtract(remaining, 1);
        state.timeString.set(timeString(remaining));
        if (remaining == TicktackController::noticeSeconds)
            the().client.periodEndsSoon(state);
        if (remaining > 0 || state.timesUp.value())
            return;
        logger().info("ticktack timer timesup for " + std::to_string(full), startPlace);
        // This may well start the next period and so end this one: nothing of it is touched afterwards.
        state.timesUp.set(true);
    }
};

} // namespace

void TicktackController::wire(TicktackClient& client, TickerSource& tickers) {
    shared = std::make_unique<Shared>(Shared{client, tickers});
}

void TicktackController::work(std::int64_t seconds) {
    stop();
    ticktack(seconds, the().client.workState());
}

void TicktackController::break_(std::int64_t seconds) {
    stop();
    ticktack(seconds, the().client.breakState());
}

void TicktackController::stop() {
    the().cancellable.cancel();
    logger().info("ticktack timer stoped " + decimalText(timer().interval()),
                  {"TicktackController", "stop()"});
}

void TicktackController::ticktack(std::int64_t seconds, TicktackState& ticktack) {
    ticktack.timesUp.set(false);
    ticktack.timeString.set(timeString(seconds));
    logger().info("ticktack timer start " + std::to_string(seconds), startPlace);
    the().cancellable =
        timer().connect([period = Period{seconds, seconds, ticktack}]() mutable { period.tick(); });
    if (seconds <= noticeSeconds)
        the().client.periodEndsSoon(ticktack);
}

} // namespace kelpa
