#include "app/AppState.h"

#include "app/TimedPause.h"
#include "base/FatalError.h"
#include "base/Text.h"
#include "timer/TicktackController.h"
#include "ui/StatusBarController.h"

namespace kelpa {

namespace {

constexpr std::int64_t secondsAMinute = 60;

struct State {
    bool manualPause = false;
    bool working = true;
    std::shared_ptr<WorkItem> mouseMoveEventItem = {};
    Listeners<> workingAssigned = {};
};

/// Never destroyed: parts of the program refer to each other in circles until its very end.
State& state = *new State;

/// What the states that others hold are made with.
struct Surroundings {
    App& app;
    Ports& ports;
};

Wired<Surroundings> around("The program's state was");

void showPauseLine(const char* image, const char* title) {
    if (MenuItem* line = StatusBarController::menu().itemWithTag(StatusBarController::pause))
        line->show(image, "- " + localized(title) + " -");
}

} // namespace

void AppState::wire(App& app, Ports& ports) {
    around.wire({app, ports});
}

bool AppState::manualPause() {
    return state.manualPause;
}

void AppState::setManualPause(bool pause) {
    state.manualPause = pause;
    TimedPause::forget();
    setWorking(!pause);
}

void AppState::liftManualPause() {
    state.manualPause = false;
}

bool AppState::working() {
    return state.working;
}

void AppState::setWorking(bool working) {
    state.working = working;
    breakHold().endWait();
    breakNotice().beginAnew();
    history().workAssigned(working, TicktackController::counted());
    if (working) {
        TicktackController::work(lengthOf(prefState().workTime, secondsAMinute));
        showPauseLine("stop.circle", translatable("Stop"));
    } else {
        TicktackController::stop();
        // The word is the key of the text as people know it, misspelt as it is.
        showPauseLine("play.circle", translatable("Wrok"));
    }
    state.workingAssigned.tell();
}

Subscription AppState::observeWorking(std::function<void()> told) {
    return state.workingAssigned.add(std::move(told));
}

PrefState& AppState::prefState() {
    static auto& made = *new PrefState(around->ports.defaults, around->ports.clock, around->app);
    return made;
}

PromptState& AppState::promptState() {
    static auto& made = *new PromptState(around->app, around->ports.random);
    return made;
}

TicktackState& AppState::workState() {
    static auto& made = *new TicktackState;
    return made;
}

TicktackState& AppState::breakState() {
    static auto& made = *new TicktackState;
    return made;
}

PrefWaterState& AppState::waterState() {
    static auto& made = *new PrefWaterState(around->ports.defaults, around->ports.clock,
                                            around->ports.mainQueue, around->app);
    return made;
}

BreakNotice& AppState::breakNotice() {
    const Services& services = around->ports.services;
    static auto& made =
        *new BreakNotice(around->app, services.notifications, services.busy, around->ports.mainQueue);
    return made;
}

BreakHold& AppState::breakHold() {
    static auto& made = *new BreakHold(around->app, around->ports.services.busy, around->ports.mainQueue);
    return made;
}

HistoryRecorder& AppState::history() {
    static auto& made = *new HistoryRecorder(around->ports.history, around->ports.clock, around->app);
    return made;
}

std::shared_ptr<WorkItem>& AppState::mouseMoveEventItem() {
    return state.mouseMoveEventItem;
}

} // namespace kelpa
