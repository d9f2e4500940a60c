#pragma once

#include "platform/linux/tray/StatusItemSink.h"

namespace kelpa {

/// A tray that belongs to the display server and not to the session bus.
class DisplayTray : public StatusItemSink {
  public:
    /// Whether there is one at all.
    [[nodiscard]] virtual bool managerPresent() const = 0;
};

} // namespace kelpa
