#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <utility>

namespace kelpa {

/// What is due when: jobs in the order of their times, and those of one instant in the order they were armed.
/// Knows no clock; times are microseconds on whatever clock its owner uses. No member but `runDue` runs a
/// job.
class TimerQueue {
  public:
    using Time = std::uint64_t;
    class Job;

    TimerQueue() = default;
    TimerQueue(const TimerQueue&) = delete;
    TimerQueue& operator=(const TimerQueue&) = delete;

    /// Arms `work` for `due`; with an `interval` above 0 it repeats on the grid that `due` starts.
    std::shared_ptr<Job> add(Time due, Time interval, std::function<void()> work);
    /// Disarms a job; one that runs at this moment is not interrupted, but does not come again.
    void remove(Job& job);
    [[nodiscard]] std::optional<Time> earliest() const;
    /// Runs what is due at `now`, and nothing that was armed meanwhile; ends early when `stopped` becomes
    /// true.
    void runDue(Time now, const bool& stopped);

  private:
    using Key = std::pair<Time, std::uint64_t>;
    using Jobs = std::map<Key, std::shared_ptr<Job>>;
    std::shared_ptr<Job> takeDue(Time now, std::uint64_t armedBefore);

    Jobs jobs_;
    std::uint64_t nextNumber_ = 0;
};

} // namespace kelpa
