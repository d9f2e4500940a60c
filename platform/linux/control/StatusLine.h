#pragma once

#include "platform/linux/bus/BusMessage.h"

#include <optional>
#include <string>

namespace kelpa {

/// The program's properties in one line, for people: state, time, a break's kind, and the water where the
/// reminder is on. Nothing when a property is missing or of a wrong type.
[[nodiscard]] std::optional<std::string> plainLine(const BusValues& values);
/// The same as one JSON object, always whole.
[[nodiscard]] std::optional<std::string> jsonLine(const BusValues& values);

} // namespace kelpa
