#pragma once

#include "base/Published.h"

#include <string>

namespace kelpa {

/// A countdown as others see it.
struct TicktackState {
    Published<std::string> timeString; ///< the time left of the current period
    Published<bool> timesUp{false}; ///< from the tick at which the period ran out until the next one starts
};

} // namespace kelpa
