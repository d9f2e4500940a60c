#pragma once

#include "base/FatalError.h"

#include <cstdint>
#include <limits>

namespace kelpa {

[[nodiscard]] inline bool productFits(std::int64_t a, std::int64_t b) {
    constexpr auto highest = std::numeric_limits<std::int64_t>::max();
    constexpr auto lowest = std::numeric_limits<std::int64_t>::min();
    return a == 0 || b == 0 ||
           (a > 0 ? (b > 0 ? a <= highest / b : b >= lowest / a)
                  : (b > 0 ? a >= lowest / b : b >= highest / a));
}

/// Integer arithmetic that ends the process instead of wrapping round: a wrong length would be worse.
inline std::int64_t checkedMultiply(std::int64_t a, std::int64_t b) {
    if (!productFits(a, b))
        fatalError("Integer overflow in multiplication");
    return a * b;
}

inline std::int64_t checkedAdd(std::int64_t a, std::int64_t b) {
    constexpr auto highest = std::numeric_limits<std::int64_t>::max();
    constexpr auto lowest = std::numeric_limits<std::int64_t>::min();
    if (b > 0 ? a > highest - b : a < lowest - b)
        fatalError("Integer overflow in addition");
    return a + b;
}

inline std::int64_t checkedSubtract(std::int64_t a, std::int64_t b) {
    constexpr auto highest = std::numeric_limits<std::int64_t>::max();
    constexpr auto lowest = std::numeric_limits<std::int64_t>::min();
    if (b < 0 ? a > highest + b : a < lowest + b)
        fatalError("Integer overflow in subtraction");
    return a - b;
}

} // namespace kelpa
