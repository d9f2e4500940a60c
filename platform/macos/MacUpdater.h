#pragma once

#include "platform/ports/Services.h"

#include <memory>

namespace kelpa {

/// The updater of this build; null where it was built without the Sparkle framework or without a feed.
[[nodiscard]] std::unique_ptr<Updater> makeMacUpdater();

} // namespace kelpa
