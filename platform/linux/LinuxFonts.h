#pragma once

#include "platform/ports/System.h"

#include <memory>

namespace kelpa {

/// The font files that come with the program, which `folder` holds as NAME.ttf. This process draws nothing:
/// what draws loads the same file for itself, so that registering a font here means seeing to it that it can
/// be read.
[[nodiscard]] std::unique_ptr<Fonts> makeLinuxFonts(std::string folder);

} // namespace kelpa
