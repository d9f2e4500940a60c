#include "base/Text.h"

#include <algorithm>
#include <cinttypes>
#include <cmath>
#include <cstdio>
#include <cstdlib>
#include <limits>
#include <locale>
#include <sstream>
#include <utility>

namespace kelpa {

namespace {

Translations table;

/// Nothing stands for 0; as many digits as an hour count can have and no more.
std::optional<std::int64_t> countOf(std::string_view digits) {
    constexpr std::size_t mostDigits = 15;
    if (digits.size() > mostDigits)
        return std::nullopt;
    return digits.empty() ? 0 : wholeNumber<std::uint64_t>(digits);
}

std::string formatted(double value, int precision, bool fixed = false) {
    std::ostringstream out;
    out.imbue(std::locale::classic());
    out.precision(precision);
    (fixed ? out << std::fixed : out) << value;
    return out.str();
}

} // namespace

void setTranslations(Translations chosen) {
    table = std::move(chosen);
}

std::string localized(const std::string& key) {
    return table ? table(key) : key;
}

std::string timeString(std::int64_t seconds) {
    if (seconds < 1)
        return "00:00";
    char hours[24] = "";
    if (seconds >= 3600)
        std::snprintf(hours, sizeof hours, "%02" PRId64, seconds / 3600);
    char text[40];
    std::snprintf(text, sizeof text, "%s%02d:%02d", hours, static_cast<int>(seconds % 3600 / 60),
                  static_cast<int>(seconds % 60));
    return text;
}

std::int64_t secondsOf(std::string_view timeText) {
    const auto colon = timeText.find(':');
    if (colon == std::string_view::npos || colon < 2 || timeText.size() != colon + 3)
        return 0;
    const auto hours = countOf(timeText.substr(0, colon - 2));
    const auto minutes = countOf(timeText.substr(colon - 2, 2));
    const auto seconds = countOf(timeText.substr(colon + 1));
    return hours && minutes && seconds ? *hours * 3600 + *minutes * 60 + *seconds : 0;
}

std::vector<int> numbersIn(std::string_view text, std::string_view form) {
    std::vector<int> numbers;
    if (text.size() != form.size())
        return numbers;
    for (std::size_t at = 0; at < form.size(); ++at) {
        const bool isDigit = text[at] >= '0' && text[at] <= '9';
        if (form[at] == '0' ? !isDigit : text[at] != form[at])
            return {};
        if (form[at] != '0')
            continue;
        if (at == 0 || form[at - 1] != '0')
            numbers.push_back(0);
        numbers.back() = numbers.back() * 10 + (text[at] - '0');
    }
    return numbers;
}

std::string decimalText(double value) {
    if (std::isnan(value))
        return "nan";
    if (std::isinf(value))
        return value < 0 ? "-inf" : "inf";
    std::string text;
    for (int precision = 1; precision <= std::numeric_limits<double>::max_digits10; ++precision) {
        text = formatted(value, precision);
        if (parseDecimal(text) == value)
            break;
    }
    if (text.find('e') != std::string::npos && std::fabs(value) >= 1 && std::fabs(value) < 1e16)
        text = formatted(value, 0, true);
    if (text.find_first_of(".e") == std::string::npos)
        text += ".0";
    return text;
}

std::optional<double> parseDecimal(std::string_view text) {
    if (text.empty() || text.find_first_not_of("0123456789+-.eE") != std::string_view::npos)
        return std::nullopt;
    std::istringstream in{std::string(text)};
    in.imbue(std::locale::classic());
    double value = 0;
    in >> value;
    if (in.fail() || in.peek() != std::istringstream::traits_type::eof())
        return std::nullopt;
    return value;
}

std::string_view trimmed(std::string_view text, std::string_view blanks) {
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    return text.substr(0, text.find_last_not_of(blanks) + 1);
}

std::string replacingAll(std::string text, std::string_view from, std::string_view to) {
    for (auto at = text.find(from); at != std::string::npos; at = text.find(from, at + to.size()))
        text.replace(at, from.size(), to);
    return text;
}

std::string printable(std::string_view text) {
    constexpr std::string_view digits = "0123456789abcdef", known = "\n\r\t", letters = "nrt";
    std::string shown;
    for (const char character : text) {
        const auto code = static_cast<unsigned char>(character);
        const auto letter = known.find(character);
        if (letter != std::string_view::npos)
            (shown += '\\') += letters[letter];
        else if (code < 0x20 || code == 0x7F)
            ((shown += "\\x") += digits[code >> 4U]) += digits[code & 0xFU];
        else
            shown += character;
    }
    return shown;
}

std::string shortened(const std::string& text, std::size_t mostBytes) {
    constexpr std::string_view ellipsis = "…";
    constexpr std::size_t longestCharacter = 4;
    if (text.size() <= mostBytes)
        return text;
    const std::size_t room = mostBytes - ellipsis.size();
    const auto isInside = [&](std::size_t at) {
        return (static_cast<unsigned char>(text[at]) & 0xC0U) == 0x80;
    };
    std::size_t end = room;
    while (end > 0 && room - end < longestCharacter && isInside(end))
        --end;
    // What has no beginning of a character is no text in UTF-8, and may be cut anywhere.
    return text.substr(0, end > 0 && !isInside(end) ? end : room).append(ellipsis);
}

std::string withArguments(std::string_view text, const std::vector<std::string>& arguments) {
    constexpr std::size_t length = std::string_view("%1$s").size();
    std::string all;
    while (!text.empty()) {
        const bool names = text.size() >= length && text[0] == '%' && text.substr(2, 2) == "$s";
        const auto place = names ? static_cast<std::size_t>(text[1] - '1') : arguments.size();
        const bool known = place < arguments.size();
        all += known ? std::string_view(arguments[place]) : text.substr(0, 1);
        text.remove_prefix(known ? length : 1);
    }
    return all;
}

} // namespace kelpa
