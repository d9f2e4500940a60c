#include "water/PrefWaterState.h"

#include "base/FatalError.h"
#include "base/Text.h"
#include "history/HistoryRecorder.h"
#include "logging/SharedLogger.h"

#include <algorithm>
#include <cmath>

namespace kelpa {

namespace {

constexpr std::int64_t secondsADay = 86400;

constexpr LogPlace at(std::string_view function) {
    return {"PrefWaterState", function};
}

/// Farther from 1970, in seconds, than any year that a calendar can name.
constexpr double farthest = 1e17;
/// The longest interval, in minutes, that such a time leaves room for in a whole number of seconds.
constexpr std::int64_t longestInterval = 150'000'000'000'000'000;

/// One line a run is enough for a fault that every read meets again.
void reportOnce(const std::string& message) {
    static std::set<std::string> reported;
    if (reported.insert(message).second)
        logger().warning(message, at("read"));
}

void reportOutOfRange(std::string_view key, const std::string& value) {
    reportOnce("stored " + std::string(key) + " is " + value +
               ", which is out of range, the default one is used");
}

bool isReachable(double seconds) {
    return std::fabs(seconds) < farthest;
}

std::int64_t wholeSeconds(double seconds) {
    constexpr double limit = 9223372036854775808.0;
    const double whole = std::trunc(seconds);
    if (!std::isfinite(whole) || whole < -limit || whole >= limit)
        fatalError("The time to the next reminder is out of range");
    return static_cast<std::int64_t>(whole);
}

} // namespace

std::string desc(WaterMode mode) {
    return mode == WaterMode::interval ? localized("Interval") : localized("Timing");
}

std::string tip(WaterMode mode) {
    return mode == WaterMode::interval ? "Will remind you every selected time interval"
                                       : "Will remind you at selected time points";
}

std::vector<std::int64_t> values(WaterMode mode) {
    if (mode == WaterMode::interval)
        return {15, 30, 45, 60, 90, 120};
    return {9, 10, 11, 12, 13, 14, 15, 16, 17, 18, 19};
}

std::vector<WaterMode> allWaterModes() {
    return {WaterMode::interval, WaterMode::timing};
}

std::optional<Date> StoredDate::read(const DefaultsStore& store, std::string_view key) {
    const auto text = store.get<std::string>(key);
    if (!text)
        return std::nullopt;
    const Date date = dateFromText(*text);
    if (isReachable(date.secondsSince1970))
        return date;
    reportOutOfRange(key, dateText(date));
    return std::nullopt;
}

void StoredDate::write(DefaultsStore& store, std::string_view key, Date value) {
    store.set(key, dateText(value));
}

std::optional<double> StoredTimestamp::read(const DefaultsStore& store, std::string_view key) {
    const auto seconds = store.get<double>(key);
    if (!seconds || isReachable(*seconds))
        return seconds;
    reportOutOfRange(key, decimalText(*seconds));
    return std::nullopt;
}

std::optional<std::int64_t> StoredInterval::read(const DefaultsStore& store, std::string_view key) {
    const auto minutes = store.get<std::int64_t>(key);
    if (!minutes || (*minutes >= -longestInterval && *minutes <= longestInterval))
        return minutes;
    reportOutOfRange(key, std::to_string(*minutes));
    return std::nullopt;
}

std::optional<std::set<Date>> StoredTimePoints::read(const DefaultsStore& store, std::string_view key) {
    const auto text = store.get<std::string>(key);
    if (!text)
        return std::nullopt;
    auto points = timePointsFromText(*text);
    if (points && points->empty())
        reportOnce("stored time points are empty, the default ones are used");
    return points && !points->empty() ? points : std::nullopt;
}

void StoredTimePoints::write(DefaultsStore& store, std::string_view key, const std::set<Date>& value) {
    store.set(key, timePointsText(value));
}

std::optional<std::int64_t> StoredTarget::read(const DefaultsStore& store, std::string_view key) {
    const auto target = store.get<std::int64_t>(key);
    if (target && *target < 1)
        reportOnce("stored water target is below 1, the default one is used");
    return target && *target >= 1 ? target : std::nullopt;
}

PrefWaterState::PrefWaterState(DefaultsStore& store, const Clock& clock, Queue& mainQueue, App& app)
    : store_(store), calendar_(clock), app_(app), mainQueue_(mainQueue) {
    enable.whenChanged([this](bool enabled) { wasEnabled(enabled); });
    const auto plan = [this](const auto&) { updateSchedule(); };
    target.whenChanged(plan);
    mode.whenChanged(plan);
    intervalStartDate.whenChanged(plan);
    intervalEndDate.whenChanged(plan);
    selectedInterval.whenChanged(plan);
    selectedTimings.whenChanged(plan);
}

std::set<Date> PrefWaterState::defaultTimings() const {
    std::set<Date> points;
    for (const std::int64_t hour : values(WaterMode::timing))
        points.insert(calendar_.today(static_cast<int>(hour), 0, 0));
    return points;
}

void PrefWaterState::wasEnabled(bool enabled) {
    if (enabled) {
        app_.insetWaterItem();
        schedule();
    } else {
        app_.removeWaterItem();
        app_.closeWaterView();
        cancel();
    }
}

const std::vector<std::int64_t>& PrefWaterState::amounts() const {
    static const std::vector<std::int64_t> all = {50, 100, 150, 200, 250, 300, 350, 400, 500};
    return all;
}

std::int64_t PrefWaterState::remain() const {
    return checkedSubtract(target(), finished());
}

float PrefWaterState::finishedPrecent() const {
    return static_cast<float>(finished()) / static_cast<float>(target());
}

bool PrefWaterState::isNewDay() const {
    return !calendar_.isInToday(Date{lastClickTimestamp()});
}

std::vector<Date> PrefWaterState::pointsToday() const {
    std::vector<Date> points;
    for (const Date point : selectedTimings())
        points.push_back(calendar_.todayDate(point));
    if (points.empty())
        fatalError("Unexpectedly found nil while unwrapping an Optional value");
    std::sort(points.begin(), points.end());
    return points;
}

bool PrefWaterState::inWorkTime() const {
    const Date now = calendar_.now();
    if (mode() == WaterMode::timing) {
        const auto points = pointsToday();
        return now > points.front() && now < points.back();
    }
    return now > calendar_.todayDate(intervalStartDate()) && now < calendar_.todayDate(intervalEndDate());
}

std::int64_t PrefWaterState::nextReminder() const {
    if (mode() == WaterMode::timing)
        return nextPoint();
    const double due = lastClickTimestamp() + static_cast<double>(selectedInterval()) * 60.0;
    return wholeSeconds(due - calendar_.now().secondsSince1970);
}

std::int64_t PrefWaterState::nextPoint() const {
    const auto points = pointsToday();
    const Date now = calendar_.now();
    const Date reference = calendar_.todayDate(Date{lastClickTimestamp()});
    const auto later = [&](Date point) { return point > reference && point > now; };
    const auto found = std::find_if(points.begin(), points.end(), later);
    const Date next = found == points.end() ? points.front() : *found;
    const std::int64_t seconds = wholeSeconds(next.secondsSince1970 - now.secondsSince1970);
    if (seconds >= 0)
        return seconds;
    const std::int64_t daysPast = checkedSubtract(0, seconds) / secondsADay;
    return checkedAdd(seconds, checkedMultiply(checkedAdd(daysPast, 1), secondsADay));
}

void PrefWaterState::schedule() {
    cancel();
    if (!inWorkTime()) {
        logger().info("Not in work time", at("schedule()"));
        return;
    }
    const std::int64_t seconds = nextReminder();
    workItem_ = std::make_shared<WorkItem>([this] { app_.showWaterView(); });
    mainQueue_.asyncAfter(static_cast<double>(seconds), workItem_);
    armed_.tell(seconds);
}

void PrefWaterState::cancel() {
    if (!workItem_ || !workItem_->pending())
        return;
    workItem_->cancel();
    cancelled_.tell();
}

void PrefWaterState::updateSchedule() {
    if (!enable()) {
        logger().info("waterState.enable is false", at("updateSchedule()"));
        return;
    }
    app_.updateWaterItem();
    if (inWorkTime())
        schedule();
    else
        cancel();
}

void PrefWaterState::updateClickTimestamp() {
    lastClickTimestamp.set(calendar_.now().secondsSince1970);
}

void PrefWaterState::updateFinished() {
    const std::int64_t drunk = lastSelectedAmount();
    finished.set(checkedAdd(finished(), drunk));
    app_.history().drank(drunk, target());
}

void PrefWaterState::reset() {
    updateClickTimestamp();
    finished.set(0);
}

std::int64_t wholePercentage(float share) {
    const float percentage = share * 100;
    constexpr float limit = 9223372036854775808.0F;
    if (!std::isfinite(percentage) || percentage < -limit || percentage >= limit)
        fatalError("The share of the day's water is no number");
    return static_cast<std::int64_t>(percentage);
}

} // namespace kelpa
