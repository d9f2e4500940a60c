#pragma once

#import <dispatch/dispatch.h>

#include "platform/ports/Timers.h"
#include "platform/posix/SystemClock.h"

#include <memory>
#include <string>
#include <vector>

namespace kelpa {

/// The system's clock, and the calendar and week that the user chose for it.
class MacClock final : public SystemClock {
  public:
    explicit MacClock(double speed = 1.0);
    [[nodiscard]] std::optional<CalendarDay> ownDay(Date date) const override;
    [[nodiscard]] std::optional<WeekRule> weekRule() const override;
    [[nodiscard]] Subscription at(Date date, std::function<void()> work) override;
};

/// Timers of the main run loop in its common modes, so that they fire while a menu is open or a window is
/// dragged. Ticks come `speed` times as fast as real time.
class RunLoopTickers final : public TickerSource {
  public:
    explicit RunLoopTickers(double speed = 1.0) : speed_(speed) {}
    std::unique_ptr<Ticker> makeTicker(double interval) override;

  private:
    double speed_;
};

/// A queue of the system's. Delays pass `speed` times as fast as real time.
class DispatchQueue final : public Queue {
  public:
    explicit DispatchQueue(dispatch_queue_t queue, double speed = 1.0) : queue_(queue), speed_(speed) {}

    void async(std::function<void()> work) override;
    void asyncAfter(double seconds, std::shared_ptr<WorkItem> item) override;

  private:
    dispatch_queue_t queue_;
    double speed_;
};

/// Serial queues with default attributes and default quality of service. Delays pass `speed` times as fast as
/// real time.
class SerialDispatchQueues final : public QueueSource {
  public:
    explicit SerialDispatchQueues(double speed) : speed_(speed) {}
    Queue& makeSerialQueue(const std::string& label) override;

  private:
    double speed_;
    std::vector<std::unique_ptr<DispatchQueue>> queues_;
};

} // namespace kelpa
