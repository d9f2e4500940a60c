#pragma once

#include "platform/ports/System.h"

#include <random>

namespace kelpa {

/// Numbers by a generator of the standard library.
template <class Generator>
[[nodiscard]] RandomBelow randomBelow(Generator generator) {
    return [generator](std::size_t count) mutable {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(generator);
    };
}

/// Numbers that are others in each run.
[[nodiscard]] inline RandomBelow systemRandom() {
    return randomBelow(std::minstd_rand(std::random_device()()));
}

} // namespace kelpa
