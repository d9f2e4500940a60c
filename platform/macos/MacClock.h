#pragma once

#include "platform/posix/SystemClock.h"

namespace kelpa {

/// The system's clock, and the calendar and week that the user chose for it.
class MacClock final : public SystemClock {
  public:
    explicit MacClock(double speed = 1.0);
    [[nodiscard]] std::optional<CalendarDay> ownDay(Date date) const override;
    [[nodiscard]] std::optional<WeekRule> weekRule() const override;
};

} // namespace kelpa
