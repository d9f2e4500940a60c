#pragma once

#include "platform/ports/Clock.h"

namespace kelpa {

/// A clock whose calendar is the C library's. A zone that is changed while the program runs is seen at the
/// next question.
class LocalClock : public Clock {
  public:
    [[nodiscard]] CivilTime civil(Date date) const final;
    [[nodiscard]] std::optional<Date> date(const CivilTime& civil) const final;
    [[nodiscard]] int utcOffset(Date date) const final;
    /// The C library knows no calendar but this one.
    [[nodiscard]] std::optional<CalendarDay> ownDay(Date) const override { return std::nullopt; }
};

} // namespace kelpa
