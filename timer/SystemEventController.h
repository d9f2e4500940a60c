#pragma once

#include "platform/ports/System.h"
#include "platform/ports/Timers.h"
#include "prefs/App.h"

namespace kelpa {

/// What the events of the desk are watched with.
struct SystemEventPorts {
    LockNotifications& lock;
    ActivityMonitor& activity;
    QueueSource& queues;
    Queue& mainQueue;
};

/// Stops and starts the cycle by what happens at the desk: the screen is locked or unlocked, or nobody has
/// moved the mouse for five minutes.
class SystemEventController {
  public:
    /// How long the mouse may stand still.
    static constexpr double idleSeconds = 300.0;

    /// App and ports must outlive the process's last event. Call before anything else.
    static void wire(App& app, const SystemEventPorts& ports);

    /// Watches from now on until the process ends.
    static void setup();

    /// Whether the screen is locked, as far as the desktop told.
    [[nodiscard]] static bool locked();
    /// Has the cycle stopped if nobody moves the mouse from now on, as at the launch: where that rule is on
    /// and a mouse can be watched. Starts nothing.
    static void armIdleCheck();
};

} // namespace kelpa
