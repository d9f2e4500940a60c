#pragma once

#include <cstddef>

namespace kelpa {

class RandomSource {
  public:
    virtual ~RandomSource() = default;
    /// A uniformly distributed number below `count`, which is at least 1.
    [[nodiscard]] virtual std::size_t below(std::size_t count) = 0;
};

} // namespace kelpa
