#include "platform/posix/Speed.h"

#include "base/Text.h"

namespace kelpa {

std::optional<double> speedOf(const std::string& text) {
    const auto speed = parseDecimal(text);
    // What is no number is neither above nor below another.
    return speed && *speed > 0 && *speed <= highestSpeed ? speed : std::nullopt;
}

} // namespace kelpa
