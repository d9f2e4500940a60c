#pragma once

#include <optional>
#include <string>

namespace kelpa {

/// How many seconds may pass in one, for demonstrations and tests.
inline constexpr int highestSpeed = 1000;

/// A speed as it is written on a command line, above 0 and up to `highestSpeed`; nothing for anything else.
[[nodiscard]] std::optional<double> speedOf(const std::string& text);

} // namespace kelpa
