#pragma once

#include "base/Calendar.h"
#include "platform/ports/DefaultsStore.h"
#include "platform/ports/Timers.h"

#include <functional>
#include <memory>
#include <string_view>

namespace kelpa {

/// When the program looks for new versions by itself: so long after the last time, also across restarts.
class UpdateSchedule {
  public:
    /// Seconds since 1970 of the last check, whoever asked for it.
    static constexpr std::string_view lastCheckKey = "update.lastCheck";
    /// Not among the first things after log-in, when everything else wants the network and the disk.
    static constexpr double soonest = 60;

    /// All arguments outlive the schedule.
    UpdateSchedule(const Clock& clock, Queue& queue, DefaultsStore& store, std::function<void()> due);
    ~UpdateSchedule();
    UpdateSchedule(const UpdateSchedule&) = delete;
    UpdateSchedule& operator=(const UpdateSchedule&) = delete;

    /// From now on, every `interval` seconds. Call once.
    void start(double interval);
    /// A check begins.
    void noteCheck();

  private:
    [[nodiscard]] double remaining() const;
    void arm(double seconds);
    void wake();

    const Clock& clock_;
    Queue& queue_;
    DefaultsStore& store_;
    std::function<void()> due_;
    double interval_ = 0;
    std::shared_ptr<WorkItem> item_;
};

} // namespace kelpa
