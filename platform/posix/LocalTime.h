#pragma once

#include "base/Date.h"

#include <optional>

namespace kelpa {

/// The C library's local calendar. Each call looks at the time zone anew, so that a change of it while the
/// program runs is seen at once.
[[nodiscard]] CivilTime localCivilTime(Date date);
/// A time that exists twice gives the first instant, one that the clock skips the first instant after the
/// gap; nothing for what is no date at all, such as 30 February.
[[nodiscard]] std::optional<Date> localDate(const CivilTime& civil);
/// Seconds east of UTC.
[[nodiscard]] int localUtcOffset(Date date);

} // namespace kelpa
