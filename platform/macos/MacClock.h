#pragma once

#include "platform/posix/SystemClock.h"

namespace kelpa {

/// The system's clock, and the week of the user's region.
class MacClock final : public SystemClock {
  public:
    explicit MacClock(double speed = 1.0);
    [[nodiscard]] std::optional<WeekRule> weekRule() const override;
};

} // namespace kelpa
