#pragma once

#include "platform/ports/Clock.h"

namespace kelpa {

/// The system's clock and time zone, and the week rule of the user's region.
class MacClock final : public Clock {
  public:
    /// With a `speed` other than 1 the time runs ahead of the system's, which it left when the clock was
    /// made.
    explicit MacClock(double speed = 1.0);

    [[nodiscard]] Date now() const override;
    [[nodiscard]] CivilTime civil(Date date) const override;
    [[nodiscard]] std::optional<Date> date(const CivilTime& civil) const override;
    [[nodiscard]] int utcOffset(Date date) const override;
    [[nodiscard]] std::optional<WeekRule> weekRule() const override;

  private:
    double speed_;
    double start_;
};

} // namespace kelpa
