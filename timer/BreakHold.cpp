#include "timer/BreakHold.h"

#include "logging/SharedLogger.h"
#include "prefs/PromptState.h"
#include "timer/TicktackController.h"

#include <algorithm>

namespace kelpa {

namespace {

void log(const std::string& message) {
    logger().info(message, {"BreakHold", "breakIsDue()"});
}

} // namespace

BreakHold::BreakHold(App& app, BusyProbe* probe, Queue& mainQueue)
    : app_(app), mainQueue_(mainQueue), question_(app.prefState(), probe, mainQueue) {
    const auto begins = [this](bool timesUp) {
        if (!timesUp)
            endWait();
    };
    workTold_ = app.workState().timesUp.subscribe(begins);
    breakTold_ = app.breakState().timesUp.subscribe(begins);
    settingTold_ = app.prefState().holdBreaks.observe([this](bool hold) {
        if (!hold && (question_.out() || heldBy_))
            breakComes();
    });
}

void BreakHold::breakIsDue() {
    if (question_.out() || heldBy_)
        return;
    const auto reasons = wanted_ ? std::set<BusyReason>() : question_.chosen();
    if (reasons.empty())
        breakComes();
    else
        ask(reasons);
}

void BreakHold::ask(const std::set<BusyReason>& reasons) {
    question_.ask(reasons, [this](std::optional<BusyReason> reason) {
        if (reason)
            wait(*reason);
        else
            breakComes();
    });
}

void BreakHold::wait(BusyReason reason) {
    setHeldBy(reason);
    next_ = mainQueue_.after(pause, [this] { askAgain(); });
}

void BreakHold::askAgain() {
    ++waited_;
    const auto reasons = question_.chosen();
    const bool longEnough = waited_ >= limit();
    if (longEnough)
        log("the break has waited for " + std::to_string(waited_) + " minutes and comes");
    if (longEnough || reasons.empty())
        breakComes();
    else
        ask(reasons);
}

void BreakHold::breakComes() {
    endWait();
    app_.promptState().showBreak();
}

void BreakHold::endWait() {
    question_.drop();
    next_.cancel();
    waited_ = 0;
    wanted_ = false;
    setHeldBy(std::nullopt);
}

void BreakHold::setHeldBy(std::optional<BusyReason> reason) {
    if (reason == heldBy_)
        return;
    heldBy_ = reason;
    log(reason ? "the break waits: " + std::string(nameOf(*reason)) : "the break waits no longer");
    changed_.tell();
}

std::int64_t BreakHold::limit() const {
    return std::clamp(app_.prefState().holdLimit(), shortestLimit, longestLimit);
}

} // namespace kelpa
