#pragma once

#include "platform/ports/Services.h"

#include <memory>

namespace kelpa {

/// The updater of this build. Where it was built without the Sparkle framework or without a feed it checks
/// for nothing, and says so when it is asked to.
[[nodiscard]] std::unique_ptr<Updater> makeMacUpdater();

} // namespace kelpa
