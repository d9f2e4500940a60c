#import "platform/macos/RunLoopTickers.h"

#import "platform/macos/Bridge.h"

namespace kelpa {

namespace {

/// Keeps no time itself: each connection is a timer of its own.
class RunLoopTicker final : public Ticker {
  public:
    RunLoopTicker(double interval, double real) : interval_(interval), real_(real) {}
    [[nodiscard]] double interval() const override { return interval_; }
    Subscription connect(std::function<void()> tick) override;

  private:
    double interval_;
    double real_;
};

Subscription RunLoopTicker::connect(std::function<void()> tick) {
    const auto shared = std::make_shared<std::function<void()>>(std::move(tick));
    NSTimer* timer = [NSTimer timerWithTimeInterval:real_
                                            repeats:YES
                                              block:^(NSTimer*) {
                                                // The callback may end its own timer, and the block with it.
                                                const auto running = shared;
                                                callCore(*running);
                                              }];
    [timer setTolerance:0];
    [[NSRunLoop mainRunLoop] addTimer:timer forMode:NSRunLoopCommonModes];
    return Subscription([timer] { [timer invalidate]; });
}

} // namespace

std::unique_ptr<Ticker> RunLoopTickers::makeTicker(double interval) {
    return std::make_unique<RunLoopTicker>(interval, interval / speed_);
}

} // namespace kelpa
