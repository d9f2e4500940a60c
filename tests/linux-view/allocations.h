#pragma once

#include <cstddef>

/// How often this program has asked for memory.
[[nodiscard]] std::size_t allocations();
