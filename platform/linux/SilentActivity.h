#pragma once

#include "platform/ports/DesktopEvents.h"

namespace kelpa {

/// There is no source of mouse and modifier-key activity on this desktop yet, so none is ever told of.
class SilentActivity final : public ActivityMonitor {
  public:
    void observe(std::function<void()>) override {}
};

} // namespace kelpa
