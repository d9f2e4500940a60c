#pragma once

#include "platform/ports/Notifications.h"

#include <memory>

namespace kelpa {

/// The system's notification centre, which asks the user for permission when the first one is shown.
[[nodiscard]] std::unique_ptr<Notifications> makeMacNotifications();

} // namespace kelpa
