#include "timer/SystemEventController.h"

#include "base/FatalError.h"

namespace kelpa {

namespace {

struct Shared {
    SystemEventClient& client;
    SystemEventPorts ports;
    Queue* systemEventQueue = nullptr;
};

std::unique_ptr<Shared> shared;

Shared& the() {
    if (!shared)
        fatalError("The events of the desk were used before the program was set up");
    return *shared;
}

/// Holds nothing but the pending checks; made on first use.
Queue& systemEventQueue() {
    if (!the().systemEventQueue)
        the().systemEventQueue =
            &the().ports.queues.makeSerialQueue(the().client.identifier() + ".system.event.queue");
    return *the().systemEventQueue;
}

/// Runs on the system event queue, where the program's state must not be touched.
void handOverTheStop() {
    the().ports.mainQueue.async([] { the().client.setWorking(false); });
}

/// What each event does.
class SystemEventActions {
  public:
    static void didLockScreenShow();
    static void didLockScreenDismiss();
    static void onTrigger();
    static void onNothingToWatch();

  private:
    [[nodiscard]] static bool greetNewDay();
};

void SystemEventActions::didLockScreenShow() {
    SystemEventClient& client = the().client;
    PrefState& pref = client.prefState();
    if (pref.showNewDayTip())
        pref.updateWeakupTimestamp();
    if (!pref.restartTimerAfterAwake())
        return;
    client.setWorking(false);
    client.closeBreakWindows();
}

void SystemEventActions::didLockScreenDismiss() {
    SystemEventClient& client = the().client;
    const bool newDay = client.prefState().showNewDayTip() && greetNewDay();
    // On a new day work starts when the greeting ends.
    if (!newDay && client.prefState().restartTimerAfterAwake() && !client.manualPause())
        client.setWorking(true);
    if (!client.waterHasNewDay())
        return;
    client.closeWaterView();
    client.startWaterDay();
}

/// With the tip on, every unlock starts the count towards the next long break afresh, whatever the day.
bool SystemEventActions::greetNewDay() {
    SystemEventClient& client = the().client;
    const bool newDay = client.prefState().isNewDay();
    if (newDay)
        client.promptState().showNewDay();
    client.promptState().resetShortBreakTimes();
    return newDay;
}

void SystemEventActions::onTrigger() {
    SystemEventClient& client = the().client;
    if (!client.prefState().stopTimerAfterMouseStop())
        return;
    if (const auto& pending = client.mouseMoveEventItem())
        pending->cancel();
    if (!client.manualPause() && !client.working())
        client.setWorking(true);
    const auto check = std::make_shared<WorkItem>(handOverTheStop);
    client.setMouseMoveEventItem(check);
    systemEventQueue().asyncAfter(SystemEventController::idleSeconds, check);
}

/// A cycle that was stopped now could not be started by anything that a person does with the mouse.
void SystemEventActions::onNothingToWatch() {
    if (const auto& pending = the().client.mouseMoveEventItem())
        pending->cancel();
}

} // namespace

void SystemEventController::wire(SystemEventClient& client, const SystemEventPorts& ports) {
    shared = std::make_unique<Shared>(Shared{client, ports});
}

void SystemEventController::setup() {
    const SystemEventPorts& ports = the().ports;
    ports.lock.observe(SystemEventActions::didLockScreenShow, SystemEventActions::didLockScreenDismiss);
    const auto watch =
        ports.activity.watch(SystemEventActions::onTrigger, SystemEventActions::onNothingToWatch);
    if (watch == ActivityMonitor::Watch::Working)
        SystemEventActions::onTrigger();
}

} // namespace kelpa
