#include "timer/SystemEventController.h"

#include "base/FatalError.h"
#include "history/HistoryRecorder.h"
#include "prefs/PromptState.h"
#include "timer/BreakHold.h"

namespace kelpa {

namespace {

struct Events {
    App& app;
    SystemEventPorts ports;
    Queue* systemEventQueue = nullptr;
    bool locked = false;
    bool watched = false; ///< activity is heard of
};

Wired<Events> events("The events of the desk were");

/// Holds nothing but the pending checks; made on first use.
Queue& systemEventQueue() {
    if (!events->systemEventQueue)
        events->systemEventQueue =
            &events->ports.queues.makeSerialQueue(events->app.identifier() + ".system.event.queue");
    return *events->systemEventQueue;
}

/// Runs on the system event queue, where the program's state must not be touched.
void handOverTheStop() {
    events->ports.mainQueue.async([] {
        events->app.history().stopsFor(HistoryEnd::Idle);
        events->app.setWorking(false);
    });
}

/// What each event does.
struct SystemEventActions {
    static void didLockScreenShow() {
        events->locked = true;
        App& app = events->app;
        PrefState& pref = app.prefState();
        if (pref.showNewDayTip())
            pref.updateWeakupTimestamp();
        app.breakHold().endWait();
        if (!pref.restartTimerAfterAwake())
            return;
        app.history().stopsFor(HistoryEnd::Locked);
        app.setWorking(false);
        app.closeBreakWindows();
    }

    /// With the tip on, every unlock starts the count towards the next long break afresh, whatever the day.
    static bool greetNewDay() {
        App& app = events->app;
        const bool newDay = app.prefState().isNewDay();
        if (newDay)
            app.promptState().showNewDay();
        app.promptState().resetShortBreakTimes();
        return newDay;
    }

    static void didLockScreenDismiss() {
        events->locked = false;
        App& app = events->app;
        const bool pauseOver = app.liftTimedPause();
        const bool newDay = app.prefState().showNewDayTip() && greetNewDay();
        const bool starts = app.prefState().restartTimerAfterAwake() || pauseOver;
        // On a new day work starts when the greeting ends.
        if (!newDay && starts && !app.manualPause())
            app.setWorking(true);
        if (!app.waterHasNewDay())
            return;
        app.closeWaterView();
        app.startWaterDay();
    }

    static void onTrigger() {
        events->watched = true;
        App& app = events->app;
        if (!app.prefState().stopTimerAfterMouseStop())
            return;
        cancelIdleCheck();
        if (!app.manualPause() && !app.working())
            app.setWorking(true);
        armIdleCheck();
    }

    static void armIdleCheck() {
        App& app = events->app;
        app.mouseMoveEventItem() = std::make_shared<WorkItem>(handOverTheStop);
        systemEventQueue().asyncAfter(SystemEventController::idleSeconds, app.mouseMoveEventItem());
    }

    static void cancelIdleCheck() {
        if (const auto& pending = events->app.mouseMoveEventItem())
            pending->cancel();
    }

    /// A cycle that was stopped now could not be started by anything that a person does with the mouse.
    static void onNothingToWatch() {
        events->watched = false;
        cancelIdleCheck();
    }
};

} // namespace

void SystemEventController::wire(App& app, const SystemEventPorts& ports) {
    events.wire({app, ports});
}

bool SystemEventController::locked() {
    return events->locked;
}

void SystemEventController::armIdleCheck() {
    if (!events->watched || !events->app.prefState().stopTimerAfterMouseStop())
        return;
    SystemEventActions::cancelIdleCheck();
    SystemEventActions::armIdleCheck();
}

void SystemEventController::setup() {
    const SystemEventPorts& ports = events->ports;
    ports.lock.observe(SystemEventActions::didLockScreenShow, SystemEventActions::didLockScreenDismiss);
    const auto watch =
        ports.activity.watch(SystemEventActions::onTrigger, SystemEventActions::onNothingToWatch);
    if (watch == ActivityMonitor::Watch::Working)
        SystemEventActions::onTrigger();
}

} // namespace kelpa
