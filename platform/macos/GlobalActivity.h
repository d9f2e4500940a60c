#pragma once

#include "platform/ports/DesktopEvents.h"

namespace kelpa {

/// Mouse and modifier-key events on their way to other applications. Mouse events need no permission;
/// modifier keys are seen only once the user has allowed the application to watch the keyboard.
class GlobalActivity final : public ActivityMonitor {
  public:
    Watch watch(std::function<void()> activity, std::function<void()> lost) override;
};

} // namespace kelpa
