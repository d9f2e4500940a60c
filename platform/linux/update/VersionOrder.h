#pragma once

#include <compare>
#include <string_view>

namespace kelpa {

/// Which of two versions is the later one, in the order that people mean: numbers count as numbers (1.10
/// comes behind 1.9), a word makes a version an earlier one (1.0 beta 2 comes before 1.0), zeros at the end
/// say nothing (1.0.0 is 1), and neither does what stands behind a plus sign. Numbers may be of any length.
[[nodiscard]] std::weak_ordering versionOrder(std::string_view left, std::string_view right);

} // namespace kelpa
