#import "platform/macos/MacPorts.h"

#import <Foundation/Foundation.h>
#import <QuartzCore/QuartzCore.h>
#import <dispatch/dispatch.h>

#import "platform/macos/Bridge.h"

#include "platform/posix/SystemClock.h"

#include <algorithm>
#include <cmath>
#include <vector>

namespace kelpa {

namespace {

class MacClock final : public SystemClock {
  public:
    explicit MacClock(double speed) : SystemClock(speed, CACurrentMediaTime) {}

    [[nodiscard]] std::optional<CalendarDay> ownDay(Date date) const override {
        NSCalendar* calendar = [NSCalendar currentCalendar];
        if ([[calendar calendarIdentifier] isEqualToString:NSCalendarIdentifierGregorian])
            return std::nullopt;
        constexpr NSCalendarUnit units =
            NSCalendarUnitYear | NSCalendarUnitYearForWeekOfYear | NSCalendarUnitMonth | NSCalendarUnitDay;
        NSDate* moment = [NSDate dateWithTimeIntervalSince1970:date.secondsSince1970];
        NSDateComponents* day = [calendar components:units fromDate:moment];
        return CalendarDay{static_cast<int>([day year]), static_cast<int>([day yearForWeekOfYear]),
                           static_cast<int>([day month]), static_cast<int>([day day])};
    }

    [[nodiscard]] std::optional<WeekRule> weekRule() const override {
        NSCalendar* calendar = [NSCalendar currentCalendar];
        // The calendar counts weekdays from 1, which is Sunday.
        return WeekRule{static_cast<int>([calendar firstWeekday]) - 1,
                        static_cast<int>([calendar minimumDaysInFirstWeek])};
    }

    [[nodiscard]] Subscription at(Date date, std::function<void()> work) override {
        dispatch_source_t timer =
            dispatch_source_create(DISPATCH_SOURCE_TYPE_TIMER, 0, 0, dispatch_get_main_queue());
        const auto set = [this, date, timer] {
            const double due = systemTime(date);
            timespec moment{};
            moment.tv_sec = static_cast<time_t>(due);
            moment.tv_nsec = static_cast<long>((due - std::floor(due)) * static_cast<double>(NSEC_PER_SEC));
            // The wall clock's time, which goes on while the machine sleeps and can be set.
            dispatch_source_set_timer(timer, dispatch_walltime(&moment, 0), DISPATCH_TIME_FOREVER, 0);
        };
        set();
        dispatch_source_set_event_handler(timer, ^{
          // A clock that runs at another speed than the system's may not be there when that one is.
          constexpr double rounding = 1e-3;
          if (now().secondsSince1970 + rounding < date.secondsSince1970)
              return set();
          dispatch_source_cancel(timer);
          callCore(work);
        });
        dispatch_resume(timer);
        return Subscription([timer] { dispatch_source_cancel(timer); });
    }
};

/// Keeps no time itself: each connection is a timer of its own.
class RunLoopTicker final : public Ticker {
  public:
    RunLoopTicker(double interval, double real) : interval_(interval), real_(real) {}
    [[nodiscard]] double interval() const override { return interval_; }
    Subscription connect(std::function<void()> tick) override {
        const auto shared = std::make_shared<std::function<void()>>(std::move(tick));
        NSTimer* timer = [NSTimer timerWithTimeInterval:real_
                                                repeats:YES
                                                  block:^(NSTimer*) {
                                                    // The callback may end its own timer, and the block with
                                                    // it.
                                                    const auto running = shared;
                                                    callCore(*running);
                                                  }];
        [timer setTolerance:0];
        [[NSRunLoop mainRunLoop] addTimer:timer forMode:NSRunLoopCommonModes];
        return Subscription([timer] { [timer invalidate]; });
    }

  private:
    double interval_;
    double real_;
};

class RunLoopTickers final : public TickerSource {
  public:
    explicit RunLoopTickers(double speed) : speed_(speed) {}
    std::unique_ptr<Ticker> makeTicker(double interval) override {
        return std::make_unique<RunLoopTicker>(interval, interval / speed_);
    }

  private:
    double speed_;
};

/// Longer waits are cut down to it, some 190 years, so that they fit into 64 bits of nanoseconds.
constexpr double longestWait = 6e9;

std::int64_t nanoseconds(double seconds) {
    if (!(seconds > 0))
        return 0;
    return std::llround(std::min(seconds, longestWait) * static_cast<double>(NSEC_PER_SEC));
}

/// A queue of the system's.
class DispatchQueue final : public Queue {
  public:
    DispatchQueue(dispatch_queue_t queue, double speed) : queue_(queue), speed_(speed) {}

    void async(std::function<void()> work) override {
        dispatch_async(queue_, ^{
          callCore(work);
        });
    }

    void asyncAfter(double seconds, std::shared_ptr<WorkItem> item) override {
        // A timer of its own rather than dispatch_after: a cancelled one is gone at once, and mouse movements
        // cancel many. DISPATCH_TIME_NOW counts on a clock that stands still while the machine sleeps.
        dispatch_source_t timer = dispatch_source_create(DISPATCH_SOURCE_TYPE_TIMER, 0, 0, queue_);
        const dispatch_time_t due = dispatch_time(DISPATCH_TIME_NOW, nanoseconds(seconds / speed_));
        dispatch_source_set_timer(timer, due, DISPATCH_TIME_FOREVER, 0);
        // The handler keeps the timer alive until it fires or is cancelled, either of which lets go of the
        // handler.
        dispatch_source_set_event_handler(timer, ^{
          dispatch_source_cancel(timer);
          callCore([&] { item->perform(); });
        });
        item->onCancel([timer] { dispatch_source_cancel(timer); });
        dispatch_resume(timer);
        // An item that was cancelled before it could be told how to leave must not stay behind either.
        if (!item->pending())
            dispatch_source_cancel(timer);
    }

  private:
    dispatch_queue_t queue_;
    double speed_;
};

class SerialDispatchQueues final : public QueueSource {
  public:
    explicit SerialDispatchQueues(double speed) : speed_(speed) {}
    Queue& makeSerialQueue(const std::string& label) override {
        const dispatch_queue_t queue = dispatch_queue_create_with_target(
            label.c_str(), DISPATCH_QUEUE_SERIAL, dispatch_get_global_queue(QOS_CLASS_DEFAULT, 0));
        return *queues_.emplace_back(std::make_unique<DispatchQueue>(queue, speed_));
    }

  private:
    double speed_;
    std::vector<std::unique_ptr<DispatchQueue>> queues_;
};

} // namespace

std::unique_ptr<Clock> makeMacClock(double speed) {
    return std::make_unique<MacClock>(speed);
}

std::unique_ptr<TickerSource> makeRunLoopTickers(double speed) {
    return std::make_unique<RunLoopTickers>(speed);
}

std::unique_ptr<Queue> makeMainQueue(double speed) {
    return std::make_unique<DispatchQueue>(dispatch_get_main_queue(), speed);
}

std::unique_ptr<QueueSource> makeSerialQueues(double speed) {
    return std::make_unique<SerialDispatchQueues>(speed);
}

} // namespace kelpa
