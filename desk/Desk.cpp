#include "desk/Desk.h"

#include "app/AppState.h"
#include "platform/posix/Random.h"
#include "ui/PreferencesView.h"
#include "ui/WindowController.h"

namespace kelpa::desk {

Desk::Desk(VirtualTime& virtualTime, Journal& theJournal, std::uint64_t seed)
    : time(virtualTime), journal(theJournal), random_(randomBelow(std::mt19937_64(seed))) {
    VirtualClock::setZone("UTC");
    start({2026, 1, 5, 9, 0, 0});
}

void Desk::launch() {
    startTime_.reset();
    delegate_ = std::make_unique<AppDelegate>(ports_, recordingLogFiles(journal));
    followPublishedValues();
    delegate_->applicationDidFinishLaunching();
}

void Desk::fault(const std::string& message) {
    journal.note("fatal", oneLine(message));
    throw FatalEnd{message};
}

void Desk::start(const CivilTime& civil) {
    startTime_ = civil;
    if (const auto date = clock.date(civil))
        clock.set(*date);
}

void Desk::setZone(const std::string& name) {
    VirtualClock::setZone(name);
    if (startTime_)
        start(CivilTime(*startTime_));
}

void Desk::pass(std::int64_t microseconds) {
    if (microseconds > 0)
        startTime_.reset();
    time.pass(microseconds);
}

PreferencesClient& Desk::preferences() {
    return *WindowController::prefView();
}

Date Desk::todayAt(const CivilTime& timeOfDay) const {
    return Calendar(clock).today(timeOfDay.hour, timeOfDay.minute, timeOfDay.second);
}

void Desk::followPublishedValues() {
    PromptState& prompt = AppState::promptState();
    subscriptions_.push_back(prompt.prompt.subscribe(
        [this](const std::string& text) { journal.note("break", "prompt " + inQuotes(text)); }));
    subscriptions_.push_back(prompt.showSkipButton.subscribe(
        [this](bool show) { journal.note("break", show ? "skip yes" : "skip no"); }));
    subscriptions_.push_back(AppState::breakState().timeString.subscribe(
        [this](const std::string& text) { journal.note("count", text); }));
    PrefWaterState& water = AppState::waterState();
    subscriptions_.push_back(water.finished.observe(
        [this](std::int64_t total) { journal.note("water", "finished " + std::to_string(total)); }));
    subscriptions_.push_back(water.observeArmed(
        [this](std::int64_t seconds) { journal.note("water", "armed " + std::to_string(seconds)); }));
    subscriptions_.push_back(water.observeCancelled([this] { journal.note("water", "cancelled"); }));
}

} // namespace kelpa::desk
