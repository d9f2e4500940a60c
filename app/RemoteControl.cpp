#include "app/RemoteControl.h"

#include "app/AppState.h"
#include "ui/BreakView.h"
#include "ui/WindowController.h"

#include <memory>
#include <vector>

namespace kelpa {

namespace {

using State = RemoteStatus::State;
using Refusal = RemoteControl::Refusal;

constexpr Refusal obeyed = std::nullopt;
constexpr Refusal breakIsOn = "A break is on the screen and can be neither paused nor resumed";
constexpr Refusal noBreak = "No break is on the screen";
constexpr Refusal forced = "This break cannot be skipped";
constexpr Refusal waterIsOff = "The water reminder is switched off";

State state() {
    if (WindowController::breakShows())
        return State::Break;
    if (AppState::manualPause())
        return State::Paused;
    return AppState::working() ? State::Working : State::Stopped;
}

} // namespace

std::string_view nameOf(State state) {
    switch (state) {
    case State::Working:
        return "working";
    case State::Break:
        return "break";
    case State::Stopped:
        return "stopped";
    case State::Paused:
        return "paused";
    }
    return {};
}

std::string_view nameOf(BreakKind kind) {
    switch (kind) {
    case BreakKind::None:
        return "none";
    case BreakKind::Short:
        return "short";
    case BreakKind::Long:
        return "long";
    case BreakKind::NewDay:
        return "newday";
    }
    return {};
}

RemoteStatus RemoteControl::status() {
    const bool onBreak = WindowController::breakShows();
    const PrefWaterState& water = AppState::waterState();
    RemoteStatus status;
    status.state = state();
    status.time = (onBreak ? AppState::breakState() : AppState::workState()).timeString.value();
    status.breakKind = onBreak ? AppState::promptState().lastKind() : BreakKind::None;
    status.paused = AppState::manualPause();
    status.waterEnabled = water.enable();
    status.waterFinished = water.finished();
    status.waterTarget = water.target();
    return status;
}

Subscription RemoteControl::observe(const std::function<void()>& changed) {
    auto all = std::make_shared<std::vector<Subscription>>();
    const auto follow = [&](Subscription subscription) { all->push_back(std::move(subscription)); };
    const auto told = [changed](const auto&) { changed(); };
    follow(AppState::observeWorking(changed));
    follow(WindowController::observeBreakShows(changed));
    follow(AppState::workState().timeString.subscribe(told));
    follow(AppState::breakState().timeString.subscribe(told));
    PrefWaterState& water = AppState::waterState();
    follow(water.enable.observe(told));
    follow(water.finished.observe(told));
    follow(water.target.observe(told));
    return Subscription([all] { all->clear(); });
}

Refusal RemoteControl::pause() {
    if (WindowController::breakShows())
        return breakIsOn;
    if (!AppState::manualPause())
        AppState::setManualPause(true);
    return obeyed;
}

Refusal RemoteControl::resume() {
    if (WindowController::breakShows())
        return breakIsOn;
    // A work period that runs goes on; it would begin anew.
    if (AppState::manualPause() || !AppState::working())
        AppState::setManualPause(false);
    return obeyed;
}

Refusal RemoteControl::toggle() {
    if (WindowController::breakShows())
        return breakIsOn;
    AppState::setManualPause(!AppState::manualPause());
    return obeyed;
}

Refusal RemoteControl::skip() {
    if (!WindowController::breakShows())
        return noBreak;
    PromptState& prompt = AppState::promptState();
    if (!prompt.showSkipButton.value())
        return forced;
    skipBreak(prompt);
    return obeyed;
}

Refusal RemoteControl::showWater() {
    if (!AppState::waterState().enable())
        return waterIsOff;
    WindowController::showWaterView();
    return obeyed;
}

Refusal RemoteControl::showSettings() {
    WindowController::showPrefView();
    return obeyed;
}

Refusal RemoteControl::quit() {
    application_.terminate();
    return obeyed;
}

} // namespace kelpa
