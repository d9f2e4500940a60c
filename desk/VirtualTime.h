#pragma once

#include "platform/ports/Timers.h"
#include "platform/posix/SystemClock.h"

#include <cstdint>
#include <functional>
#include <list>
#include <map>
#include <memory>
#include <string>
#include <vector>

namespace kelpa::desk {

/// A monotonic clock that moves only when told to, with the timers and the queue that run on it. Jobs due at
/// one instant run in the order they were armed; a ticker counts as armed anew at each tick.
class VirtualTime final : public TickerSource, public Queue, public QueueSource {
  public:
    [[nodiscard]] std::int64_t microseconds() const { return now_; }
    [[nodiscard]] double seconds() const { return static_cast<double>(now_) / 1e6; }

    /// Lets time pass and runs everything that falls due, up to and including the last instant. Ends early
    /// once `stop()` was called.
    void pass(std::int64_t microseconds);
    void stop() { stopped_ = true; }
    [[nodiscard]] bool stopped() const { return stopped_; }

    std::unique_ptr<Ticker> makeTicker(double interval) override;
    void async(std::function<void()> work) override;
    void asyncAfter(double seconds, std::shared_ptr<WorkItem> item) override;
    /// In virtual time nothing runs beside anything else: the queue's work takes its turn with all other.
    Queue& makeSerialQueue(const std::string& label) override;
    /// Of the serial queues that were made, in their order.
    [[nodiscard]] const std::vector<std::string>& queueLabels() const { return queueLabels_; }

    Subscription every(double interval, std::function<void()> tick);

  private:
    struct Job {
        std::function<void()> work;
        std::int64_t interval = 0; ///< 0 for a job that runs once
        bool alive = true;
    };
    std::shared_ptr<Job> arm(double seconds, std::function<void()> work, std::int64_t interval = 0);

    std::int64_t now_ = 0;
    bool stopped_ = false;
    /// By the instant at which they are due; those of one instant in the order in which they were armed.
    std::multimap<std::int64_t, std::shared_ptr<Job>> jobs_;
    std::vector<std::string> queueLabels_;
};

/// A wall clock that follows virtual time until it is stepped. Its time zone is the process's.
class VirtualClock final : public LocalClock {
  public:
    explicit VirtualClock(VirtualTime& time) : time_(time) {}

    /// Sets what the wall clock shows now.
    void set(Date date);
    void step(double seconds);
    /// Switches the process to a time zone of the system's database; false if there is none of this name.
    static bool setZone(const std::string& name);

    [[nodiscard]] Date now() const override;
    [[nodiscard]] std::optional<WeekRule> weekRule() const override { return std::nullopt; }
    [[nodiscard]] Subscription at(Date date, std::function<void()> work) override;

  private:
    struct Appointment {
        Date date;
        std::shared_ptr<WorkItem> item; ///< armed for the time that is left
        std::function<void()> work;
    };
    void arm(const std::shared_ptr<Appointment>& appointment);
    /// The clock shows another time: what waits for one waits longer or less long.
    void rearm();

    VirtualTime& time_;
    using Appointments = std::list<std::shared_ptr<Appointment>>;
    /// Which handles that outlive the clock find gone.
    std::shared_ptr<Appointments> appointments_ = std::make_shared<Appointments>();
    /// What the wall clock showed when virtual time began, in microseconds since 1970.
    std::int64_t offset_ = 0;
};

} // namespace kelpa::desk
