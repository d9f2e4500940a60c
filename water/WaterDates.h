#pragma once

#include "base/Calendar.h"

#include <optional>
#include <set>
#include <string>
#include <string_view>

namespace kelpa {

/// A date as the store keeps it: the decimal text of its seconds since 1970.
[[nodiscard]] std::string dateText(Date date);
/// The date of such a text; 1970 where the text is no number.
[[nodiscard]] Date dateFromText(std::string_view text);

/// Dates as the JSON array of their seconds since 2001-01-01 00:00 UTC; "[]" when one is not finite.
[[nodiscard]] std::string timePointsText(const std::set<Date>& points);
/// The dates of such a text; nothing for anything but a JSON array of numbers.
[[nodiscard]] std::optional<std::set<Date>> timePointsFromText(std::string_view text);

} // namespace kelpa
