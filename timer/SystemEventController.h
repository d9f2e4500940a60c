#pragma once

#include "platform/ports/DesktopEvents.h"
#include "platform/ports/Queue.h"
#include "prefs/PrefState.h"
#include "prefs/PromptState.h"

#include <memory>
#include <string>

namespace kelpa {

/// What the events of the desk ask of the program around them.
class SystemEventClient {
  public:
    virtual ~SystemEventClient() = default;
    [[nodiscard]] virtual std::string identifier() const = 0;
    [[nodiscard]] virtual PrefState& prefState() = 0;
    [[nodiscard]] virtual PromptState& promptState() = 0;
    [[nodiscard]] virtual bool manualPause() const = 0;
    [[nodiscard]] virtual bool working() const = 0;
    virtual void setWorking(bool working) = 0;
    /// The pending check whether the mouse has stood still; null until there was one.
    [[nodiscard]] virtual const std::shared_ptr<WorkItem>& mouseMoveEventItem() const = 0;
    virtual void setMouseMoveEventItem(std::shared_ptr<WorkItem> item) = 0;
    virtual void closeBreakWindows() = 0;
    /// Whether the water reminder is on and its last answer was on an earlier day.
    [[nodiscard]] virtual bool waterHasNewDay() const = 0;
    virtual void closeWaterView() = 0;
    /// Empties the day's total and arms the reminder anew.
    virtual void startWaterDay() = 0;
};

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

    /// Client and ports must outlive the process's last event. Call before anything else.
    static void wire(SystemEventClient& client, const SystemEventPorts& ports);

    /// Watches from now on until the process ends.
    static void setup();
};

} // namespace kelpa
