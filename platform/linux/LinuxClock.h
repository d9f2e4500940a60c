#pragma once

#include "platform/posix/SystemClock.h"

namespace kelpa {

/// The system's clock, and the week of the user's locale.
class LinuxClock final : public SystemClock {
  public:
    explicit LinuxClock(double speed = 1.0);
    [[nodiscard]] std::optional<WeekRule> weekRule() const override;
};

} // namespace kelpa
