#pragma once

#include "base/Text.h"
#include "platform/ports/System.h"

#include <memory>

namespace kelpa {

/// The string tables of the main bundle, in the language that the system chose for the user.
[[nodiscard]] std::unique_ptr<Translations> makeMacTranslations();
/// The fonts among the bundle's resources, and Core Text's registry.
[[nodiscard]] std::unique_ptr<Fonts> makeMacFonts();
/// What the main bundle and the system say of themselves. The home is the container's folder when the
/// application runs sandboxed.
[[nodiscard]] std::unique_ptr<SystemInfo> makeMacSystemInfo();

} // namespace kelpa
