#pragma once

#include "platform/linux/view/Channel.h"

#include <memory>

namespace kelpa {

/// The status item in the tray, as the program wants it. The channel outlives the item.
[[nodiscard]] std::unique_ptr<QObject> makeTrayItem(Channel& channel);

} // namespace kelpa
