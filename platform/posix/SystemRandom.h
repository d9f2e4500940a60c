#pragma once

#include "platform/ports/System.h"

#include <random>

namespace kelpa {

class SystemRandom final : public RandomSource {
  public:
    [[nodiscard]] std::size_t below(std::size_t count) override {
        return std::uniform_int_distribution<std::size_t>(0, count - 1)(generator_);
    }

  private:
    std::minstd_rand generator_{std::random_device()()};
};

} // namespace kelpa
