#include "desk/Values.h"

#include "base/Text.h"

#include <algorithm>

namespace kelpa::desk {

namespace {

constexpr std::string_view blanks = " \t";

} // namespace

std::optional<bool> parseBoolean(std::string_view text) {
    if (text == "true" || text == "yes" || text == "on" || text == "1")
        return true;
    if (text == "false" || text == "no" || text == "off" || text == "0")
        return false;
    return std::nullopt;
}

std::optional<CivilTime> parseTimeOfDay(std::string_view text) {
    auto numbers = numbersIn(text, text.size() == 5 ? "00:00" : "00:00:00");
    if (numbers.empty())
        return std::nullopt;
    numbers.resize(3);
    const CivilTime time{1970, 1, 1, numbers[0], numbers[1], numbers[2]};
    return isDate(time) ? std::optional(time) : std::nullopt;
}

std::optional<CivilTime> parseDateTime(std::string_view text) {
    const auto day = numbersIn(text.substr(0, 11), "0000-00-00T");
    auto time = day.empty() ? std::nullopt : parseTimeOfDay(text.substr(11));
    if (!time)
        return std::nullopt;
    time->year = day[0];
    time->month = day[1];
    time->day = day[2];
    return isDate(*time) ? time : std::nullopt;
}

std::vector<std::string> words(std::string_view text) {
    std::vector<std::string> all;
    for (std::string word = takeWord(text); !word.empty(); word = takeWord(text))
        all.push_back(std::move(word));
    return all;
}

std::string takeWord(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    const auto length = std::min(text.find_first_of(blanks), text.size());
    std::string word(text.substr(0, length));
    text.remove_prefix(length);
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return word;
}

} // namespace kelpa::desk
