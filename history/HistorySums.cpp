#include "history/HistorySums.h"

#include "base/Text.h"
#include "history/HistoryEntry.h"

#include <cstdio>

namespace kelpa {

namespace {

using std::chrono::year_month;
using std::chrono::year_month_day;

bool wasTaken(HistoryEnd end) {
    return end == HistoryEnd::Complete || end == HistoryEnd::Locked;
}

bool wasSkipped(HistoryEnd end) {
    return end == HistoryEnd::Skipped || end == HistoryEnd::Notice;
}

void add(HistorySum& sum, const HistoryEntry& entry) {
    switch (entry.event) {
    case HistoryEvent::Work:
        sum.workSeconds += entry.seconds;
        break;
    case HistoryEvent::Break:
        if (entry.kind != BreakKind::NewDay) {
            sum.breaksTaken += wasTaken(entry.end);
            sum.breaksSkipped += wasSkipped(entry.end);
        }
        break;
    case HistoryEvent::Drink:
        sum.millilitres += entry.millilitres;
        sum.target = entry.target;
        break;
    }
}

/// Adds the lines of a file to the days that begin with `first`.
void addLines(std::string_view bytes, HistoryDate first, std::vector<HistorySum>& days) {
    while (!bytes.empty()) {
        const auto end = bytes.find('\n');
        const auto entry = entryOf(bytes.substr(0, end));
        bytes.remove_prefix(end == std::string_view::npos ? bytes.size() : end + 1);
        if (!entry)
            continue;
        const auto day = (dateOf(entry->start) - first).count();
        if (day >= 0 && static_cast<std::size_t>(day) < days.size())
            add(days[static_cast<std::size_t>(day)], *entry);
    }
}

} // namespace

HistorySum& HistorySum::operator+=(const HistorySum& other) {
    workSeconds += other.workSeconds;
    breaksTaken += other.breaksTaken;
    breaksSkipped += other.breaksSkipped;
    millilitres += other.millilitres;
    target += other.target;
    return *this;
}

HistorySums sumsOf(HistoryFiles& files, HistoryDate first, HistoryDate last) {
    HistorySums sums;
    sums.days.resize(static_cast<std::size_t>((last - first).count()) + 1);
    const auto monthOf = [](HistoryDate date) {
        const year_month_day day = date;
        return year_month(day.year(), day.month());
    };
    for (year_month month = monthOf(first); month <= monthOf(last); month += std::chrono::months(1)) {
        const std::string name = historyMonth(static_cast<int>(month.year()),
                                              static_cast<int>(static_cast<unsigned>(month.month())));
        const auto content = files.read(name);
        addLines(content.bytes, first, sums.days);
        if (!content.problem.empty())
            sums.problems.push_back(content.problem);
    }
    return sums;
}

HistoryDate dateOf(const CivilTime& time) {
    return std::chrono::year(time.year) / time.month / time.day;
}

std::string dateText(HistoryDate date) {
    const year_month_day day = date;
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02u-%02u", static_cast<int>(day.year()),
                  static_cast<unsigned>(day.month()), static_cast<unsigned>(day.day()));
    return text;
}

std::optional<HistoryDate> historyDate(std::string_view text) {
    const auto numbers = numbersIn(text, "0000-00-00");
    if (numbers.empty())
        return std::nullopt;
    const auto day = std::chrono::year(numbers[0]) / numbers[1] / numbers[2];
    return day.ok() ? std::optional(HistoryDate(day)) : std::nullopt;
}

} // namespace kelpa
