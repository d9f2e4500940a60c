#include "history/HistoryView.h"

#include "base/Text.h"
#include "prefs/PrefState.h"

#include <algorithm>

namespace kelpa {

namespace {

using Days = std::chrono::days;

constexpr std::int64_t secondsAMinute = 60, minutesAnHour = 60;
constexpr std::int64_t daysAWeek = 7;

std::string with(const char* key, std::int64_t number) {
    return withArguments(localized(key), {std::to_string(number)});
}

std::string workedText(std::int64_t seconds) {
    const std::int64_t minutes = seconds / secondsAMinute;
    return withArguments(localized("%1$s h %2$s min"),
                         {std::to_string(minutes / minutesAnHour), std::to_string(minutes % minutesAnHour)});
}

std::string drunkText(const HistorySum& sum) {
    if (sum.target == 0)
        return with(translatable("%1$s ml"), sum.millilitres);
    return withArguments(localized("%1$s of %2$s ml"),
                         {std::to_string(sum.millilitres), std::to_string(sum.target)});
}

/// A round multiple of `least` that nothing in a chart is higher than.
std::int64_t scaleFor(std::int64_t most, std::int64_t least) {
    std::int64_t scale = least;
    for (std::int64_t power = least; scale < most; power *= 10)
        for (const std::int64_t step : {2, 3, 4, 5, 6, 8, 10, 15})
            if (scale < most)
                scale = step * power;
    return scale;
}

double share(std::int64_t value, std::int64_t full) {
    return static_cast<double>(value) / static_cast<double>(full);
}

std::int64_t highest(const std::vector<HistorySum>& sums, std::int64_t (*of)(const HistorySum&)) {
    std::int64_t most = 0;
    for (const HistorySum& sum : sums)
        most = std::max(most, of(sum));
    return most;
}

HistoryChart workChart(const std::vector<HistorySum>& sums) {
    constexpr std::int64_t hour = minutesAnHour * secondsAMinute;
    const std::int64_t most = highest(sums, [](const HistorySum& sum) { return sum.workSeconds; });
    // Hours come in pairs, of which a working day has four.
    const std::int64_t hours = std::max<std::int64_t>((most + 2 * hour - 1) / (2 * hour) * 2, 2);
    HistoryChart chart{localized("Work"), with(translatable("%1$s h"), hours), {}};
    for (const HistorySum& sum : sums)
        chart.bars.push_back({{share(sum.workSeconds, hours * hour)}, 0, {workedText(sum.workSeconds)}});
    return chart;
}

HistoryChart breakChart(const std::vector<HistorySum>& sums) {
    const std::int64_t full =
        scaleFor(highest(sums, [](const HistorySum& sum) { return sum.breaksTaken + sum.breaksSkipped; }), 5);
    HistoryChart chart{localized("Breaks"), std::to_string(full), {}};
    for (const HistorySum& sum : sums)
        chart.bars.push_back({{share(sum.breaksTaken, full), share(sum.breaksSkipped, full)},
                              0,
                              {with(translatable("%1$s taken"), sum.breaksTaken),
                               with(translatable("%1$s skipped"), sum.breaksSkipped)}});
    return chart;
}

HistoryChart waterChart(const std::vector<HistorySum>& sums) {
    const std::int64_t full = scaleFor(
        highest(sums, [](const HistorySum& sum) { return std::max(sum.millilitres, sum.target); }), 1000);
    HistoryChart chart{localized("Water"), with(translatable("%1$s ml"), full), {}};
    for (const HistorySum& sum : sums)
        chart.bars.push_back({{share(sum.millilitres, full)}, share(sum.target, full), {drunkText(sum)}});
    return chart;
}

HistoryTexts texts() {
    return {localized("History"),
            localized("Days"),
            localized("Weeks"),
            localized("Forget Everything"),
            localized("Delete everything that was recorded? It cannot be brought back."),
            localized("Delete"),
            localized("Cancel")};
}

} // namespace

HistoryView::HistoryView(HistoryWindow& window, App& app) : window_(window), app_(app) {
    window_.setTexts(texts(), *this);
}

void HistoryView::show() {
    written_ = app_.history().observe([this] { showPicture(); });
    switched_ = app_.prefState().keepHistory.observe([this](bool) { showPicture(); });
    showPicture();
    window_.show();
}

void HistoryView::cameToFront() {
    showPicture();
}

void HistoryView::rangeChosen(HistoryRange range) {
    range_ = range;
    showPicture();
}

void HistoryView::forgetConfirmed() {
    kept_ = app_.history().forgetEverything().has_value();
    showPicture();
}

void HistoryView::closed() {
    written_.cancel();
    switched_.cancel();
    range_ = HistoryRange::Days;
    kept_ = false;
}

void HistoryView::showPicture() {
    window_.setPicture(picture());
}

std::vector<HistoryDate> HistoryView::limits() const {
    const Clock& clock = app_.history().clock();
    const HistoryDate today = dateOf(clock.civil(clock.now()));
    const auto weekday = std::chrono::weekday(today).c_encoding();
    const unsigned firstWeekday = static_cast<unsigned>(clock.weekRule().value_or(WeekRule{}).firstWeekday);
    const bool byDay = range_ == HistoryRange::Days;
    const std::int64_t length = byDay ? 1 : daysAWeek;
    const HistoryDate last = byDay ? today : today - Days((weekday + daysAWeek - firstWeekday) % daysAWeek);
    std::vector<HistoryDate> all;
    for (std::int64_t columns = byDay ? days : weeks; columns >= 0; --columns)
        all.push_back(last - Days((columns - 1) * length));
    return all;
}

HistoryPicture HistoryView::picture() const {
    const auto starts = limits();
    const HistorySums read = sumsOf(app_.history().files(), starts.front(), starts.back() - Days(1));
    HistoryPicture picture;
    picture.range = range_;
    std::vector<HistorySum> sums(starts.size() - 1);
    for (std::size_t column = 0; column < sums.size(); ++column) {
        picture.periods.push_back({dateText(starts[column]), dateText(starts[column + 1] - Days(1))});
        for (auto day = starts[column]; day < starts[column + 1]; day += Days(1))
            sums[column] += read.days[static_cast<std::size_t>((day - starts.front()).count())];
    }
    picture.charts = {workChart(sums), breakChart(sums), waterChart(sums)};
    picture.note =
        note(std::all_of(sums.begin(), sums.end(), [](const HistorySum& sum) { return sum.empty(); }));
    return picture;
}

std::string HistoryView::note(bool empty) const {
    if (kept_)
        return localized("Not everything could be deleted. The log tells more.");
    if (!app_.prefState().keepHistory())
        return localized("The history is switched off in the settings.");
    return empty ? localized("Nothing has been recorded yet.") : std::string();
}

} // namespace kelpa
