#include "app/AppState.h"

#include "app/Clients.h"
#include "base/FatalError.h"
#include "base/Localized.h"
#include "timer/TicktackController.h"
#include "ui/StatusBarController.h"

#include <optional>

namespace kelpa {

namespace {

constexpr std::int64_t secondsAMinute = 60;

struct State {
    Ports* ports = nullptr;
    bool manualPause = false;
    bool working = true;
    std::optional<PrefState> pref = {};
    std::optional<PromptState> prompt = {};
    std::optional<TicktackState> work = {};
    std::optional<TicktackState> break_ = {};
    std::optional<PrefWaterState> water = {};
    std::shared_ptr<WorkItem> mouseMoveEventItem = {};
    Listeners<> workingAssigned = {};
};

/// Never destroyed: parts of the program refer to each other in circles until its very end.
State& state() {
    static State& all = *new State;
    return all;
}

Ports& ports() {
    if (!state().ports)
        fatalError("The program's state was used before it was set up");
    return *state().ports;
}

void showPauseLine(const char* image, const char* title) {
    if (MenuItem* line = StatusBarController::menu().itemWithTag(StatusBarController::pause))
        line->show(image, "- " + localized(title) + " -");
}

} // namespace

void AppState::wire(Ports& ports) {
    state().ports = &ports;
}

bool AppState::manualPause() {
    return state().manualPause;
}

void AppState::setManualPause(bool pause) {
    state().manualPause = pause;
    setWorking(!pause);
}

bool AppState::working() {
    return state().working;
}

void AppState::setWorking(bool working) {
    state().working = working;
    if (working) {
        TicktackController::work(lengthOf(prefState().workTime, secondsAMinute));
        showPauseLine("stop.circle", translatable("Stop"));
    } else {
        TicktackController::stop();
        // The word is the key of the text as people know it, misspelt as it is.
        showPauseLine("play.circle", translatable("Wrok"));
    }
    state().workingAssigned.tell();
}

Subscription AppState::observeWorking(std::function<void()> told) {
    return state().workingAssigned.add(std::move(told));
}

PrefState& AppState::prefState() {
    if (!state().pref)
        state().pref.emplace(ports().defaults, ports().clock, prefClient());
    return *state().pref;
}

PromptState& AppState::promptState() {
    if (!state().prompt)
        state().prompt.emplace(promptClient(), ports().random);
    return *state().prompt;
}

TicktackState& AppState::workState() {
    if (!state().work)
        state().work.emplace();
    return *state().work;
}

TicktackState& AppState::breakState() {
    if (!state().break_)
        state().break_.emplace();
    return *state().break_;
}

PrefWaterState& AppState::waterState() {
    if (!state().water)
        state().water.emplace(ports().defaults, ports().clock, ports().mainQueue, waterClient());
    return *state().water;
}

const std::shared_ptr<WorkItem>& AppState::mouseMoveEventItem() {
    return state().mouseMoveEventItem;
}

void AppState::setMouseMoveEventItem(std::shared_ptr<WorkItem> item) {
    state().mouseMoveEventItem = std::move(item);
}

} // namespace kelpa
