#pragma once

#include "platform/posix/LocalClock.h"

namespace kelpa {

/// The local clock, and the week of the user's locale.
class LinuxClock final : public LocalClock {
  public:
    explicit LinuxClock(double speed = 1.0);
    [[nodiscard]] std::optional<WeekRule> weekRule() const override;
};

} // namespace kelpa
