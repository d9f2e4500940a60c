#include "app/RemoteControl.h"

#include "app/AppState.h"
#include "app/TimedPause.h"
#include "base/Text.h"
#include "logging/SharedLogger.h"
#include "ui/BreakView.h"
#include "ui/WindowController.h"

#include <array>
#include <memory>
#include <utility>
#include <vector>

namespace kelpa {

namespace {

using State = RemoteStatus::State;
using Refusal = RemoteControl::Refusal;

constexpr Refusal obeyed = std::nullopt;
constexpr Refusal breakIsOn = "A break is on the screen and can be neither paused nor resumed";
constexpr Refusal noBreak = "No break is on the screen";
constexpr Refusal forced = "This break cannot be skipped";
constexpr Refusal breakIsOnAlready = "A break is on the screen already";
constexpr Refusal noBreakComes = "No work period counts down and no break waits";
constexpr Refusal forcedComes = "The break that comes next is a long one and cannot be put off";
constexpr Refusal putOffTooOften = "This break has been put off as often as it can be";
constexpr Refusal moreIsLeft = "More time than that is left";
constexpr Refusal noSuchMinutes = "A break is put off by whole minutes, from 2 to 15";
constexpr Refusal waterIsOff = "The water reminder is switched off";
constexpr Refusal noDuration = "A time to pause for is one like 45m, 2h or 1h30m, a week at most";
constexpr Refusal noTime = "A time to pause until is one like 14:30, or tomorrow";
constexpr Refusal tooMany = "More changes were asked for within a second than are made";
constexpr int mostChanges = 20;
constexpr double second = 1;

State state() {
    if (WindowController::breakShows())
        return State::Break;
    if (AppState::manualPause())
        return State::Paused;
    return AppState::working() ? State::Working : State::Stopped;
}

Refusal refusalOf(BreakNotice::Objection objection) {
    if (objection == BreakNotice::Objection::NoBreakComes && WindowController::breakShows())
        return breakIsOnAlready;
    // In the order of the objections.
    constexpr std::array refusals = {obeyed, noBreakComes, forcedComes, putOffTooOften, moreIsLeft};
    return refusals.at(static_cast<std::size_t>(objection));
}

} // namespace

std::string_view nameOf(State state) {
    constexpr std::array<std::string_view, 4> names = {"working", "break", "stopped", "paused"};
    return nameOf(names, state);
}

std::string_view nameOf(BreakKind kind) {
    constexpr std::array<std::string_view, 4> names = {"none", "short", "long", "newday"};
    return nameOf(names, kind);
}

RemoteStatus RemoteControl::status() {
    const bool onBreak = WindowController::breakShows();
    const PrefWaterState& water = AppState::waterState();
    RemoteStatus status;
    status.state = state();
    status.time = (onBreak ? AppState::breakState() : AppState::workState()).timeString.value();
    status.breakKind = onBreak ? AppState::promptState().lastKind() : BreakKind::None;
    status.heldBy = AppState::breakHold().heldBy();
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
    follow(AppState::breakHold().observe(changed));
    follow(AppState::workState().timeString.subscribe(told));
    follow(AppState::breakState().timeString.subscribe(told));
    PrefWaterState& water = AppState::waterState();
    follow(water.enable.observe(told));
    follow(water.finished.observe(told));
    follow(water.target.observe(told));
    return Subscription([all] { all->clear(); });
}

/// Each change counts for a second. The log is told once until a second has passed without any.
Refusal RemoteControl::change(const std::function<void()>& made) {
    if (recent_->changes >= mostChanges) {
        if (!std::exchange(recent_->refused, true))
            logger().warning("More than " + std::to_string(mostChanges) +
                                 " changes were asked for within a second: those beyond are refused",
                             {"RemoteControl", "change"});
        return tooMany;
    }
    ++recent_->changes;
    mainQueue_.asyncAfter(second, std::make_shared<WorkItem>([recent = recent_] {
                              if (--recent->changes == 0)
                                  recent->refused = false;
                          }));
    made();
    return obeyed;
}

Refusal RemoteControl::pause() {
    if (WindowController::breakShows())
        return breakIsOn;
    if (!AppState::manualPause())
        return change([] { AppState::setManualPause(true); });
    TimedPause::forget();
    return obeyed;
}

Refusal RemoteControl::pauseFor(const std::string& duration) {
    return pauseTo(TimedPause::endAfter(duration), noDuration);
}

Refusal RemoteControl::pauseUntil(const std::string& time) {
    return pauseTo(TimedPause::endAt(time), noTime);
}

Refusal RemoteControl::pauseTo(std::optional<Date> end, Refusal otherwise) {
    if (!end)
        return otherwise;
    if (WindowController::breakShows())
        return breakIsOn;
    return change([end] { TimedPause::start(*end); });
}

Refusal RemoteControl::resume() {
    if (WindowController::breakShows())
        return breakIsOn;
    // A work period that runs goes on; it would begin anew.
    const bool runs = !AppState::manualPause() && AppState::working();
    return runs ? obeyed : change([] { AppState::setManualPause(false); });
}

Refusal RemoteControl::toggle() {
    if (WindowController::breakShows())
        return breakIsOn;
    return change([] { AppState::setManualPause(!AppState::manualPause()); });
}

Refusal RemoteControl::skip() {
    if (!WindowController::breakShows())
        return noBreak;
    PromptState& prompt = AppState::promptState();
    if (!prompt.showSkipButton.value())
        return forced;
    return change([&prompt] { skipBreak(prompt); });
}

Refusal RemoteControl::startBreak() {
    BreakNotice& notice = AppState::breakNotice();
    if (const auto refusal = refusalOf(notice.objectionToStart()))
        return refusal;
    return change([&notice] { notice.start(); });
}

Refusal RemoteControl::postpone(const std::string& minutes) {
    BreakNotice& notice = AppState::breakNotice();
    const auto more = minutes.empty() ? notice.more() : wholeNumber<std::int64_t>(minutes).value_or(0);
    if (more < BreakNotice::leastMore || more > BreakNotice::mostMore)
        return noSuchMinutes;
    if (const auto refusal = refusalOf(notice.objectionToMore(more)))
        return refusal;
    return change([&notice, more] { notice.giveMore(more); });
}

Refusal RemoteControl::showWater() {
    if (!AppState::waterState().enable())
        return waterIsOff;
    return change([] { WindowController::showWaterView(); });
}

Refusal RemoteControl::showSettings() {
    return change([] { WindowController::showPrefView(); });
}

Refusal RemoteControl::showHistory() {
    return change([] { WindowController::showHistory(); });
}

Refusal RemoteControl::quit() {
    application_.terminate();
    return obeyed;
}

} // namespace kelpa
