#include "history/HistoryEntry.h"

#include "base/Text.h"

#include <array>
#include <cstdio>

namespace kelpa {

namespace {

// In the order of the cases.
constexpr std::array<std::string_view, 3> events = {"work", "break", "drink"};
constexpr std::array<std::string_view, 4> kinds = {"", "short", "long", "newday"};
constexpr std::array<std::string_view, 12> ends = {"break",     "newday", "paused",   "idle",
                                                   "restarted", "locked", "quit",     "complete",
                                                   "skipped",   "notice", "replaced", "drunk"};
constexpr std::string_view early = "early", due = "due";

template <class Value, std::size_t count>
bool read(const std::array<std::string_view, count>& names, std::string_view text, Value& value) {
    const auto found = caseOf<Value>(names, text);
    value = found.value_or(value);
    return found.has_value();
}

enum Column {
    DateColumn,
    Time,
    Event,
    Kind,
    Length,
    Seconds,
    Postponed,
    Begun,
    Amount,
    Target,
    End,
    Columns
};

using Fields = std::array<std::string_view, Columns>;

std::string_view unquoted(std::string_view field) {
    const bool quoted = field.size() >= 2 && field.front() == '"' && field.back() == '"';
    return quoted ? field.substr(1, field.size() - 2) : field;
}

/// No field of ours has a comma in it.
std::optional<Fields> split(std::string_view line) {
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    Fields fields;
    for (std::size_t column = 0;; ++column) {
        const auto comma = line.find(',');
        if (column == Columns || (comma == std::string_view::npos) != (column + 1 == Columns))
            return std::nullopt;
        fields[column] = unquoted(line.substr(0, comma));
        if (comma == std::string_view::npos)
            return fields;
        line.remove_prefix(comma + 1);
    }
}

/// Three numbers between two signs.
bool readThree(std::string_view text, char sign, int& first, int& second, int& third) {
    const auto one = text.find(sign);
    const auto two = one == std::string_view::npos ? one : text.find(sign, one + 1);
    if (two == std::string_view::npos)
        return false;
    const auto a = wholeNumber<int>(text.substr(0, one));
    const auto b = wholeNumber<int>(text.substr(one + 1, two - one - 1));
    const auto c = wholeNumber<int>(text.substr(two + 1));
    if (!a || !b || !c)
        return false;
    first = *a, second = *b, third = *c;
    return true;
}

bool readStart(const Fields& fields, CivilTime& start) {
    return readThree(fields[DateColumn], '-', start.year, start.month, start.day) &&
           readThree(fields[Time], ':', start.hour, start.minute, start.second) && isDate(start) &&
           start.year < 10000;
}

bool readBegun(std::string_view text, bool& isEarly) {
    isEarly = text == early;
    return isEarly || text == due || text.empty();
}

/// A number that may be left out. What is beyond every figure of a real day could not be added up.
bool readNumber(std::string_view text, std::int64_t& value) {
    constexpr std::int64_t most = 1'000'000'000;
    const auto number = text.empty() ? 0 : wholeNumber<std::int64_t>(text);
    value = number.value_or(-1);
    return value >= 0 && value <= most;
}

} // namespace

std::string lineOf(const HistoryEntry& entry) {
    const CivilTime& start = entry.start;
    char moment[64];
    std::snprintf(moment, sizeof moment, "%04d-%02d-%02d,%02d:%02d:%02d", start.year, start.month, start.day,
                  start.hour, start.minute, start.second);
    const auto number = [](bool has, std::int64_t value) {
        return "," + (has ? std::to_string(value) : std::string());
    };
    const bool pause = entry.event == HistoryEvent::Break;
    const bool drink = entry.event == HistoryEvent::Drink;
    const std::string_view begun = entry.early ? early : due;
    return moment + ("," + std::string(nameOf(events, entry.event))) + "," +
           std::string(nameOf(kinds, entry.kind)) + number(pause, entry.length) +
           number(!drink, entry.seconds) + number(pause, entry.postponed) + "," +
           std::string(pause ? begun : "") + number(drink, entry.millilitres) + number(drink, entry.target) +
           "," + std::string(nameOf(ends, entry.end));
}

std::optional<HistoryEntry> entryOf(std::string_view line) {
    const auto fields = split(line);
    if (!fields)
        return std::nullopt;
    const Fields& all = *fields;
    HistoryEntry entry;
    const bool whole = readStart(all, entry.start) && read(events, all[Event], entry.event) &&
                       read(kinds, all[Kind], entry.kind) && readNumber(all[Length], entry.length) &&
                       readNumber(all[Seconds], entry.seconds) &&
                       readNumber(all[Postponed], entry.postponed) && readBegun(all[Begun], entry.early) &&
                       readNumber(all[Amount], entry.millilitres) && readNumber(all[Target], entry.target) &&
                       read(ends, all[End], entry.end);
    return whole ? std::optional(entry) : std::nullopt;
}

std::string historyMonth(int year, int month) {
    char text[32];
    std::snprintf(text, sizeof text, "%04d-%02d", year, month);
    return text;
}

} // namespace kelpa
