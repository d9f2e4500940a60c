#include "desk/Values.h"

#include "base/Text.h"

#include <algorithm>

namespace kelpa::desk {

namespace {

constexpr std::string_view blanks = " \t";

/// A number of exactly `digits` digits at a place of a text.
std::optional<int> field(std::string_view text, std::size_t at, std::size_t digits) {
    return at + digits <= text.size() ? wholeNumber<unsigned>(text.substr(at, digits)) : std::nullopt;
}

} // namespace

std::optional<bool> parseBoolean(std::string_view text) {
    if (text == "true" || text == "yes" || text == "on" || text == "1")
        return true;
    if (text == "false" || text == "no" || text == "off" || text == "0")
        return false;
    return std::nullopt;
}

std::optional<CivilTime> parseTimeOfDay(std::string_view text) {
    const auto hour = field(text, 0, 2);
    const auto minute = field(text, 3, 2);
    const bool withSeconds = text.size() == 8 && text[5] == ':';
    const auto second = withSeconds ? field(text, 6, 2) : std::optional(0);
    if ((text.size() != 5 && !withSeconds) || text[2] != ':' || !hour || !minute || !second)
        return std::nullopt;
    const CivilTime time{1970, 1, 1, *hour, *minute, *second};
    return isDate(time) ? std::optional(time) : std::nullopt;
}

std::optional<CivilTime> parseDateTime(std::string_view text) {
    if (text.size() < 16 || text[4] != '-' || text[7] != '-' || text[10] != 'T')
        return std::nullopt;
    auto time = parseTimeOfDay(text.substr(11));
    const auto year = field(text, 0, 4);
    const auto month = field(text, 5, 2);
    const auto day = field(text, 8, 2);
    if (!time || !year || !month || !day)
        return std::nullopt;
    time->year = *year;
    time->month = *month;
    time->day = *day;
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
