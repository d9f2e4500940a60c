#pragma once

#include "platform/linux/EventLoop.h"
#include "platform/posix/SystemClock.h"

namespace kelpa {

/// The system's clock, and the week of the user's locale.
class LinuxClock final : public SystemClock {
  public:
    /// The loop outlives the clock and what waits for it.
    explicit LinuxClock(EventLoop& loop, double speed = 1.0);
    [[nodiscard]] std::optional<WeekRule> weekRule() const override;
    [[nodiscard]] Subscription at(Date date, std::function<void()> work) override;

  private:
    struct Appointment;
    EventLoop& loop_;
};

} // namespace kelpa
