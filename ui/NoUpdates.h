#pragma once

#include "base/Text.h"

#include <string>

namespace kelpa {

/// What a build that was given no feed tells a person who asks it for updates.
struct NoUpdates {
    std::string headline = localized("Kelpa does not update itself here");
    std::string text =
        localized("This copy of Kelpa does not look for updates. Get new versions where you got this one.");
    std::string close = localized("OK");
};

} // namespace kelpa
