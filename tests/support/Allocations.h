#pragma once

#include <cstddef>

/// How often this program has asked for memory. Counting takes the global operators for itself, so that it is
/// linked only to programs that need it.
[[nodiscard]] std::size_t allocations();
