#include "timer/BreakNotice.h"

#include "base/Text.h"
#include "history/HistoryRecorder.h"
#include "timer/BreakHold.h"
#include "timer/TicktackController.h"

#include <algorithm>
#include <utility>

namespace kelpa {

namespace {

constexpr const char* startAction = "start";
constexpr const char* moreAction = "more";
constexpr std::int64_t secondsAMinute = 60;

} // namespace

BreakNotice::BreakNotice(App& app, Notifications* notifications, BusyProbe* probe, Queue& mainQueue)
    : app_(app), notifications_(notifications), question_(app.prefState(), probe, mainQueue) {
    workTold_ = app.workState().timesUp.subscribe([this](bool timesUp) {
        if (!timesUp)
            periodBegins();
    });
    breakTold_ = app.breakState().timesUp.subscribe([this](bool timesUp) {
        if (!timesUp)
            beginAnew();
    });
    settingTold_ = app.prefState().breakNotice.observe([this](std::int64_t seconds) {
        setLead(seconds);
        ahead_ = secondsLeft() > lead_;
    });
}

/// While it is off nobody here hears of a tick.
void BreakNotice::setLead(std::int64_t seconds) {
    lead_ = notifications_ == nullptr ? 0 : std::max<std::int64_t>(seconds, 0);
    if (lead_ == 0) {
        ticks_.cancel();
        withdraw();
    } else if (!ticks_.active()) {
        ticks_ = app_.workState().timeString.subscribe(
            [this](const std::string& time) { ticked(secondsOf(time)); });
    }
}

/// The next that is told is the period's full length: one that is not longer than the lead is never ahead of
/// it.
void BreakNotice::periodBegins() {
    withdraw();
    ahead_ = false;
    setLead(app_.prefState().breakNotice());
}

void BreakNotice::beginAnew() {
    withdraw();
    coming_ = {};
}

void BreakNotice::ticked(std::int64_t secondsLeft) {
    if (std::exchange(ahead_, secondsLeft > lead_) && !ahead_)
        isDue(secondsLeft);
    else if (shown_ && (secondsLeft == 0 || offer() != *shown_))
        withdraw();
}

void BreakNotice::isDue(std::int64_t secondsLeft) {
    const auto reasons = question_.chosen();
    if (reasons.empty())
        return show(secondsLeft);
    question_.ask(reasons, [this](std::optional<BusyReason> reason) {
        if (!reason && this->secondsLeft() > 0)
            show(this->secondsLeft());
    });
}

void BreakNotice::show(std::int64_t secondsLeft) {
    if (objectionToStart() != Objection::None)
        return;
    const Offer offered = offer();
    Notification notification;
    notification.title = offered.kind == BreakKind::Long ? localized("A long break is near")
                                                         : localized("A short break is near");
    notification.body = withArguments(localized("It begins in %1$s seconds."), {std::to_string(secondsLeft)});
    notification.actions.push_back({startAction, localized("Start now")});
    if (offered.more > 0)
        notification.actions.push_back(
            {moreAction, withArguments(localized("%1$s more minutes"), {std::to_string(offered.more)})});
    notification.seconds = static_cast<double>(secondsLeft);
    shown_ = offered;
    notifications_->show(notification, [this](const std::string& action) { pressed(action); });
}

void BreakNotice::withdraw() {
    question_.drop();
    if (std::exchange(shown_, std::nullopt))
        notifications_->withdraw();
}

/// A press may come late, or twice.
void BreakNotice::pressed(const std::string& action) {
    if (!shown_)
        return;
    const std::int64_t offered = shown_->more;
    withdraw();
    if (action == startAction)
        start();
    else if (action == moreAction)
        giveMore(offered);
}

BreakNotice::Offer BreakNotice::offer() const {
    const std::int64_t minutes = more();
    return {app_.promptState().nextKind(), objectionToMore(minutes) == Objection::None ? minutes : 0};
}

std::int64_t BreakNotice::more() const {
    return std::clamp(app_.prefState().moreTime(), leastMore, mostMore);
}

std::int64_t BreakNotice::secondsLeft() const {
    return secondsOf(app_.workState().timeString.value());
}

BreakNotice::Objection BreakNotice::objectionToStart() const {
    return app_.working() && !app_.breakShows() ? Objection::None : Objection::NoBreakComes;
}

BreakNotice::Objection BreakNotice::objectionToMore(std::int64_t minutes) const {
    if (objectionToStart() != Objection::None)
        return Objection::NoBreakComes;
    if (app_.promptState().nextKind() == BreakKind::Long && app_.prefState().forceLongBreak())
        return Objection::Forced;
    if (coming_.postponed >= mostPostponed)
        return Objection::TooOften;
    return secondsLeft() > minutes * secondsAMinute ? Objection::MoreIsLeft : Objection::None;
}

/// A break that comes with the next tick is not put off by asking for it again and again.
void BreakNotice::start() {
    if (objectionToStart() != Objection::None || coming_.started)
        return;
    countDown(0);
    coming_.started = true;
    app_.breakHold().letNextThrough();
}

void BreakNotice::giveMore(std::int64_t minutes) {
    if (objectionToMore(minutes) != Objection::None)
        return;
    ++coming_.postponed;
    coming_.started = false;
    countDown(minutes * secondsAMinute);
}

/// The break then comes as every break does, at the end of what counts down.
void BreakNotice::countDown(std::int64_t seconds) {
    app_.history().workExtended(TicktackController::counted());
    TicktackController::work(seconds);
}

} // namespace kelpa
