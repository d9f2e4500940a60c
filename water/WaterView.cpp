#include "water/WaterView.h"

#include "base/Text.h"
#include "logging/SharedLogger.h"

#include <algorithm>
#include <utility>

namespace kelpa {

namespace {

/// Long enough for figures and bar to move to the new total before the panel goes.
constexpr double doneSeconds = 0.5;

WaterPanelTexts texts() {
    return {localized("Finished/ml"), localized("%"),    localized("Remain/ml"), localized("Well Done!"),
            localized("Skip"),        localized("Done"), localized("Close"),     "cup.and.saucer.fill"};
}

std::vector<WaterAmount> offered(const std::vector<std::int64_t>& amounts) {
    std::vector<WaterAmount> all;
    all.reserve(amounts.size());
    for (const std::int64_t amount : amounts)
        all.push_back({amount, std::to_string(amount) + localized("water.select.amount")});
    return all;
}

std::string tipFor(bool inWorkTime, std::int64_t remainSeconds) {
    if (!inWorkTime)
        return localized("Not in work time!");
    return remainSeconds < 1 ? localized("It's time to drink water!") : localized("Next drink in");
}

} // namespace

WaterView::WaterView(NativeWindow& window, App& app, TickerSource& tickers, Queue& mainQueue)
    : window_(window), app_(app), state_(app.waterState()), mainQueue_(mainQueue),
      face_(window.hostWaterPanel(*this)), timer_(tickers.makeTicker(1.0)) {
    face_->setTexts(texts(), offered(state_.amounts()));
}

void WaterView::appeared() {
    observeSettings();
    showProgress();
    showAmount();
    updateTimer();
}

void WaterView::disappeared() {
    settings_.clear();
    cancellable_.cancel();
    remainSeconds_ = 0;
}

void WaterView::shown() {
    face_->offerAnswers();
}

void WaterView::observeSettings() {
    const auto progress = [this](const auto&) { showProgress(); };
    settings_.clear();
    settings_.push_back(state_.finished.observe(progress));
    settings_.push_back(state_.target.observe(progress));
    settings_.push_back(state_.lastSelectedAmount.observe([this](std::int64_t) { showAmount(); }));
    planAnewAfter(state_.intervalStartDate);
    planAnewAfter(state_.intervalEndDate);
    planAnewAfter(state_.mode);
    planAnewAfter(state_.selectedInterval);
    planAnewAfter(state_.selectedTimings);
}

/// A setting that is written with the value that the panel has seen is no change to it.
template <class Setting>
void WaterView::planAnewAfter(Setting& setting) {
    settings_.push_back(setting.observe([this, &setting, seen = setting()](const auto&) mutable {
        auto now = setting();
        if (std::exchange(seen, now) != now)
            updateTimer();
    }));
}

void WaterView::showProgress() {
    const float share = state_.finishedPrecent();
    const std::int64_t remain = state_.remain();
    // More than the whole day's water still is a full bar.
    const auto fraction = static_cast<double>(std::clamp(share, 0.0F, 1.0F));
    face_->setProgress({std::to_string(state_.finished()), std::to_string(wholePercentage(share)),
                        remain > 0 ? std::to_string(remain) : std::string(), fraction});
}

void WaterView::showAmount() {
    face_->setSelectedAmount(state_.lastSelectedAmount());
}

void WaterView::updateTimer() {
    if (!state_.inWorkTime()) {
        cancelTimer();
        logger().info("Not in work time", {"WaterView", "updateTimer()", "WaterView"});
        return;
    }
    setRemainSeconds(state_.nextReminder());
    cancellable_ = timer_->connect([this] { tick(); });
}

void WaterView::cancelTimer() {
    cancellable_.cancel();
    setRemainSeconds(0);
}

void WaterView::tick() {
    if (remainSeconds_ < 1)
        cancellable_.cancel();
    else
        setRemainSeconds(remainSeconds_ - 1);
}

void WaterView::setRemainSeconds(std::int64_t seconds) {
    remainSeconds_ = seconds;
    face_->setCounting(
        {tipFor(state_.inWorkTime(), seconds), seconds < 1 ? std::string() : timeString(seconds)});
}

void WaterView::amountTapped(std::int64_t millilitres) {
    const auto& amounts = state_.amounts();
    if (window_.visible() && std::find(amounts.begin(), amounts.end(), millilitres) != amounts.end())
        state_.lastSelectedAmount.set(millilitres);
}

void WaterView::skipPressed() {
    if (!window_.visible())
        return;
    app_.closeWaterView();
    state_.updateClickTimestamp();
    state_.schedule();
}

void WaterView::donePressed() {
    if (!window_.visible())
        return;
    state_.updateFinished();
    state_.updateClickTimestamp();
    mainQueue_.asyncAfter(doneSeconds, std::make_shared<WorkItem>([this] {
                              app_.closeWaterView();
                              state_.schedule();
                          }));
}

void WaterView::closePressed() {
    if (window_.visible())
        app_.dismissWaterView();
}

} // namespace kelpa
