#pragma once

#include "prefs/Setting.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kelpa {

/// The tone of the texts on the break screen. The numbers are stored.
enum class BreakStyle : std::int64_t {
    default_ = 0,   ///< health advice
    relaxation = 1, ///< permission to slack off
    struggle = 2,   ///< exhortation to work hard
};

template <>
inline constexpr std::int64_t caseCount<BreakStyle> = 3;

/// The display name in the user's language.
[[nodiscard]] std::string desc(BreakStyle style);

/// The built-in texts for ordinary breaks, in their order; a new list on each call.
[[nodiscard]] std::vector<std::string> prompts(BreakStyle style);

/// The built-in texts that greet a new day, in their order; a new list on each call.
[[nodiscard]] std::vector<std::string> newDayPrompts(BreakStyle style);

/// Greets a new day in a style that has no text for it.
[[nodiscard]] std::string newDayFallback();

} // namespace kelpa
