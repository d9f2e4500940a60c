#include "water/WaterDates.h"

#include "base/Text.h"

#include <algorithm>
#include <cmath>

namespace kelpa {

namespace {

constexpr double referenceDate = 978307200;    ///< 2001-01-01 00:00 UTC in seconds since 1970
constexpr std::string_view blanks = " \t\r\n"; ///< that JSON counts as such

/// Whether JSON's grammar takes the whole text for a number: no leading zeros, no plus sign, digits on both
/// sides of the point.
bool isJsonNumber(std::string_view text) {
    const auto next = [&text](std::string_view wanted) {
        const bool there = !text.empty() && wanted.find(text.front()) != std::string_view::npos;
        text.remove_prefix(there ? 1 : 0);
        return there;
    };
    const auto digits = [&text] {
        const auto count = std::min(text.find_first_not_of("0123456789"), text.size());
        text.remove_prefix(count);
        return count > 0;
    };
    next("-");
    if (!next("0") && !digits())
        return false;
    if (next(".") && !digits())
        return false;
    if (!next("eE"))
        return text.empty();
    next("+-");
    return digits() && text.empty();
}

/// JSON has no fixed form for whole numbers; the shorter one without a fraction is the common one.
std::string jsonNumber(double value) {
    std::string text = decimalText(value);
    return text.ends_with(".0") ? text.substr(0, text.size() - 2) : text;
}

} // namespace

std::string dateText(Date date) {
    return decimalText(date.secondsSince1970);
}

Date dateFromText(std::string_view text) {
    const double seconds = parseDecimal(text).value_or(0);
    return Date{std::isfinite(seconds) ? seconds : 0};
}

std::string timePointsText(const std::set<Date>& points) {
    const auto finite = [](Date point) { return std::isfinite(point.secondsSince1970); };
    if (!std::all_of(points.begin(), points.end(), finite))
        return "[]";
    std::string text;
    for (const Date point : points)
        text += (text.empty() ? "" : ",") + jsonNumber(point.secondsSince1970 - referenceDate);
    return "[" + text + "]";
}

std::optional<std::set<Date>> timePointsFromText(std::string_view text) {
    text = trimmed(text, blanks);
    if (text.size() < 2 || text.front() != '[' || text.back() != ']')
        return std::nullopt;
    text = trimmed(text.substr(1, text.size() - 2), blanks);
    std::set<Date> points;
    for (bool more = !text.empty(); more;) {
        const auto comma = text.find(',');
        const auto number = trimmed(text.substr(0, comma), blanks);
        const auto seconds = isJsonNumber(number) ? parseDecimal(number) : std::nullopt;
        if (!seconds || !std::isfinite(*seconds))
            return std::nullopt;
        points.insert(Date{*seconds + referenceDate});
        more = comma != std::string_view::npos;
        text.remove_prefix(more ? comma + 1 : text.size());
    }
    return points;
}

} // namespace kelpa
