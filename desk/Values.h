#pragma once

#include "base/Calendar.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelpa::desk {

/// Reads the values that stand in scripts; nothing for what is not one.
[[nodiscard]] std::optional<bool> parseBoolean(std::string_view text);
/// "13:30" or "13:30:15" on 1 January 1970.
[[nodiscard]] std::optional<CivilTime> parseTimeOfDay(std::string_view text);
/// "2026-11-23T08:59:00".
[[nodiscard]] std::optional<CivilTime> parseDateTime(std::string_view text);
/// The words of a text between blanks.
[[nodiscard]] std::vector<std::string> words(std::string_view text);
/// The first word, taken off the front of `text` together with the blanks around it.
[[nodiscard]] std::string takeWord(std::string_view& text);

} // namespace kelpa::desk
