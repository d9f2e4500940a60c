#include "platform/linux/control/HistoryCommand.h"

#include "base/Text.h"
#include "platform/linux/Folders.h"
#include "platform/posix/HistoryFolder.h"

#include <algorithm>
#include <clocale>
#include <cstdio>
#include <ctime>
#include <iostream>
#include <langinfo.h>

namespace kelpa {

namespace {

using Form = HistoryCommand::Form;

constexpr std::int64_t mostDays = 36600;

std::string valueOf(std::span<const std::string> arguments, std::size_t& at, std::string_view name) {
    const std::string& argument = arguments[at];
    if (argument.size() > name.size())
        return argument.substr(name.size() + 1);
    return at + 1 < arguments.size() ? arguments[++at] : std::string();
}

bool isOption(const std::string& argument, const std::string& name) {
    return argument == name || argument.starts_with(name + "=");
}

/// What is wrong with the days that were asked for.
std::string faultOf(const HistoryCommand& command, bool countsDays) {
    if (countsDays && (command.from || command.to))
        return "--days goes without --from and --to";
    if (command.to && !command.from)
        return "--to needs --from";
    if (command.from && command.to && *command.to < *command.from)
        return "--to is a day before --from";
    if (command.from && command.to && (*command.to - *command.from).count() >= mostDays)
        return "these are more than " + std::to_string(mostDays) + " days";
    return {};
}

/// A figure at the right of its column.
std::string right(const std::string& text, std::size_t width) {
    return std::string(width - std::min(width, text.size()), ' ') + text;
}

std::string hours(std::int64_t seconds) {
    const std::string minutes = std::to_string(seconds / 60 % 60);
    return std::to_string(seconds / 3600) + (minutes.size() < 2 ? ":0" : ":") + minutes;
}

/// A share of `cells` characters, to an eighth of one where there are blocks, filled up with blanks.
std::string bar(std::int64_t value, std::int64_t full, std::int64_t cells, bool blocks) {
    static constexpr const char* parts[] = {"", "▏", "▎", "▍", "▌", "▋", "▊", "▉"};
    const auto eighths = full <= 0 ? 0 : std::min(value, full) * cells * 8 / full;
    const auto whole = blocks ? eighths / 8 : (eighths + 4) / 8;
    std::string text;
    for (std::int64_t cell = 0; cell < whole; ++cell)
        text += blocks ? "█" : "#";
    const auto rest = blocks ? eighths % 8 : 0;
    text += parts[rest];
    return text + std::string(static_cast<std::size_t>(cells - whole - (rest > 0 ? 1 : 0)), ' ');
}

constexpr std::int64_t workCells = 20;
constexpr std::int64_t waterCells = 10;

std::string row(const std::string& name, const HistorySum& sum, std::int64_t mostWork, bool blocks) {
    std::string water = sum.target == 0 && sum.millilitres == 0
                            ? ""
                            : std::to_string(sum.millilitres) + "/" + std::to_string(sum.target) + " ml";
    std::string text =
        name + right(hours(sum.workSeconds), 9) + "  " + bar(sum.workSeconds, mostWork, workCells, blocks) +
        right(std::to_string(sum.breaksTaken), 8) + right(std::to_string(sum.breaksSkipped), 9) +
        right(water, 16) + "  " + bar(sum.millilitres, sum.target, waterCells, blocks);
    text.erase(text.find_last_not_of(' ') + 1);
    return text + "\n";
}

std::string dayName(HistoryDate date) {
    static constexpr const char* names[] = {"Sun", "Mon", "Tue", "Wed", "Thu", "Fri", "Sat"};
    return dateText(date) + " " + names[std::chrono::weekday(date).c_encoding()];
}

std::string fields(HistoryDate date, const HistorySum& sum, const char* form) {
    char text[256];
    std::snprintf(text, sizeof text, form, dateText(date).c_str(), static_cast<long long>(sum.workSeconds),
                  static_cast<long long>(sum.breaksTaken), static_cast<long long>(sum.breaksSkipped),
                  static_cast<long long>(sum.millilitres), static_cast<long long>(sum.target));
    return text;
}

HistoryDate today() {
    const std::time_t now = std::time(nullptr);
    std::tm day{};
    localtime_r(&now, &day);
    return std::chrono::year(day.tm_year + 1900) / (day.tm_mon + 1) / day.tm_mday;
}

/// Whether the terminal shows what is not ASCII.
bool showsBlocks() {
    std::setlocale(LC_CTYPE, "");
    return std::string_view(nl_langinfo(CODESET)) == "UTF-8";
}

std::string printed(const HistoryCommand& command, HistoryDate first, const std::vector<HistorySum>& days) {
    if (command.form == Form::Json)
        return historyJson(first, days);
    if (command.form == Form::Csv)
        return historyCsv(first, days);
    return historyTable(first, days, showsBlocks());
}

} // namespace

ParsedHistory parseHistory(std::span<const std::string> arguments) {
    ParsedHistory parsed;
    HistoryCommand& command = parsed.command;
    bool countsDays = false;
    for (std::size_t at = 1; at < arguments.size(); ++at) {
        const std::string& argument = arguments[at];
        if (argument == "--show" && arguments.size() == 2) {
            command.show = true;
        } else if (argument == "--show") {
            return {{}, "--show goes alone"};
        } else if (argument == "--json" || argument == "--csv") {
            command.form = argument == "--json" ? Form::Json : Form::Csv;
        } else if (isOption(argument, "--days")) {
            const auto days = wholeNumber<std::int64_t>(valueOf(arguments, at, "--days"));
            if (!days || *days < 1 || *days > mostDays)
                return {{}, "--days needs a number from 1 to " + std::to_string(mostDays)};
            command.days = *days;
            countsDays = true;
        } else if (isOption(argument, "--from") || isOption(argument, "--to")) {
            const bool from = isOption(argument, "--from");
            const std::string name = from ? "--from" : "--to";
            (from ? command.from : command.to) = historyDate(valueOf(arguments, at, name));
            if (!(from ? command.from : command.to))
                return {{}, name + " needs a day like 2026-11-23"};
        } else {
            return {{}, "history does not know '" + argument + "'"};
        }
    }
    parsed.error = faultOf(command, countsDays);
    return parsed;
}

std::string historyTable(HistoryDate first, const std::vector<HistorySum>& days, bool blocks) {
    const auto told = [](const HistorySum& sum) { return !sum.empty(); };
    const auto begin = std::find_if(days.begin(), days.end(), told);
    if (begin == days.end())
        return "Nothing is recorded from " + dateText(first) + " to " +
               dateText(first + std::chrono::days(days.size() - 1)) + ".\n";
    std::int64_t mostWork = 0;
    HistorySum total;
    std::string rows;
    for (const HistorySum& sum : days)
        mostWork = std::max(mostWork, sum.workSeconds);
    for (auto sum = begin; sum != days.end(); ++sum) {
        rows += row(dayName(first + std::chrono::days(sum - days.begin())), *sum, mostWork, blocks);
        total += *sum;
    }
    const std::string head =
        "Day" + right("Worked", 20) + right("Breaks", 30) + right("Skipped", 9) + right("Water", 16) + "\n";
    return head + rows + row("Total         ", total, 0, blocks);
}

std::string historyJson(HistoryDate first, const std::vector<HistorySum>& days) {
    std::string text;
    for (const HistorySum& sum : days)
        text += (text.empty() ? "[" : ",\n ") +
                fields(first++, sum,
                       R"({"date": "%s", "worked_seconds": %lld, "breaks_taken": %lld, )"
                       R"("breaks_skipped": %lld, "water_ml": %lld, "water_target_ml": %lld})");
    return text + "]\n";
}

std::string historyCsv(HistoryDate first, const std::vector<HistorySum>& days) {
    std::string text = "date,worked_seconds,breaks_taken,breaks_skipped,water_ml,water_target_ml\n";
    for (const HistorySum& sum : days)
        text += fields(first++, sum, "%s,%lld,%lld,%lld,%lld,%lld\n");
    return text;
}

int runHistory(const HistoryCommand& command) {
    const HistoryDate last = command.to.value_or(std::max(today(), command.from.value_or(today())));
    const HistoryDate first = command.from.value_or(last - std::chrono::days(command.days - 1));
    HistoryFolder folder(historyFolder());
    const HistorySums sums = sumsOf(folder, first, last);
    std::cout << printed(command, first, sums.days) << std::flush;
    for (const std::string& problem : sums.problems)
        std::cerr << "kelpa: " << problem << '\n';
    return std::cout && sums.problems.empty() ? 0 : 1;
}

} // namespace kelpa
