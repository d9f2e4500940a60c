#include "timer/TicktackController.h"

#include "base/FatalError.h"
#include "base/Text.h"
#include "logging/SharedLogger.h"

#include <memory>

namespace kelpa {

namespace {

constexpr double tickSeconds = 1.0;

/// The running period, or the last one.
struct Period {
    std::int64_t remaining = 0;
    std::int64_t full = 0;
    TicktackState* state = nullptr;

    void tick();
};

struct Countdown {
    App& app;
    TickerSource& tickers;
    /// Made on first use and then kept: each connection has its own phase.
    std::unique_ptr<Ticker> timer = {};
    Period period = {};
    Subscription cancellable = {};
};

Wired<Countdown> countdown("The countdown was");

Ticker& timer() {
    if (!countdown->timer)
        countdown->timer = countdown->tickers.makeTicker(tickSeconds);
    return *countdown->timer;
}

/// Of what a break will show; a break needs none itself.
void endsSoon(const TicktackState& state) {
    if (&state == &countdown->app.workState())
        countdown->app.prepareBreakWindows();
}

constexpr LogPlace startPlace = {"TicktackController", "ticktack(with:ticktack:)"};

void Period::tick() {
    remaining = checkedSubtract(remaining, 1);
    TicktackState& told = *state;
    told.timeString.set(timeString(remaining));
    if (remaining == TicktackController::noticeSeconds)
        endsSoon(told);
    if (remaining > 0 || told.timesUp.value())
        return;
    logger().info("ticktack timer timesup for " + std::to_string(full), startPlace);
    // This may well start the next period, which is then this one: nothing of it is touched afterwards.
    told.timesUp.set(true);
}

} // namespace

void TicktackController::wire(App& app, TickerSource& tickers) {
    countdown.wire({app, tickers});
}

void TicktackController::work(std::int64_t seconds) {
    stop();
    ticktack(seconds, countdown->app.workState());
}

void TicktackController::break_(std::int64_t seconds) {
    stop();
    ticktack(seconds, countdown->app.breakState());
}

std::int64_t TicktackController::counted() {
    return countdown->period.full - countdown->period.remaining;
}

void TicktackController::stop() {
    countdown->cancellable.cancel();
    logger().info("ticktack timer stoped " + decimalText(timer().interval()),
                  {"TicktackController", "stop()"});
}

void TicktackController::ticktack(std::int64_t seconds, TicktackState& ticktack) {
    ticktack.timesUp.set(false);
    ticktack.timeString.set(timeString(seconds));
    logger().info("ticktack timer start " + std::to_string(seconds), startPlace);
    countdown->period = {seconds, seconds, &ticktack};
    countdown->cancellable = timer().connect([] { countdown->period.tick(); });
    if (seconds <= noticeSeconds)
        endsSoon(ticktack);
}

} // namespace kelpa
