#pragma once

#include <string>

namespace kelpa {

/// What a person is told on a desktop that has no place for the status item.
struct NoTrayText {
    std::string summary;
    std::string body;
    std::string action; ///< names what a click does
};

[[nodiscard]] NoTrayText noTrayText();

} // namespace kelpa
