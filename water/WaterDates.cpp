#include "water/WaterDates.h"

#include "base/Text.h"

#include <algorithm>
#include <cmath>

namespace kelpa {

namespace {

constexpr double referenceDate = 978307200; ///< 2001-01-01 00:00 UTC in seconds since 1970

/// Reads a JSON array of numbers and nothing else.
class NumberArrayReader {
  public:
    explicit NumberArrayReader(std::string_view text) : text_(text) {}

    /// Hands each number to `take`; false if the text is anything but an array of finite numbers.
    template <class Take>
    bool read(Take take) {
        if (!accept('['))
            return false;
        if (accept(']'))
            return atEnd();
        do {
            const auto value = number();
            if (!value)
                return false;
            take(*value);
        } while (accept(','));
        return accept(']') && atEnd();
    }

  private:
    void skipSpace() {
        while (at_ < text_.size() && std::string_view(" \t\r\n").find(text_[at_]) != std::string_view::npos)
            ++at_;
    }
    bool accept(char wanted) {
        skipSpace();
        if (at_ >= text_.size() || text_[at_] != wanted)
            return false;
        ++at_;
        return true;
    }
    bool atEnd() {
        skipSpace();
        return at_ == text_.size();
    }
    bool next(char wanted) { return at_ < text_.size() && text_[at_] == wanted && ++at_; }
    bool digits() {
        const auto start = at_;
        while (at_ < text_.size() && text_[at_] >= '0' && text_[at_] <= '9')
            ++at_;
        return at_ > start;
    }
    /// JSON's grammar: no leading zeros, no plus sign, digits on both sides of the point.
    bool numberGrammar() {
        next('-');
        if (!next('0') && !digits())
            return false;
        if (next('.') && !digits())
            return false;
        if (!next('e') && !next('E'))
            return true;
        if (!next('+'))
            next('-');
        return digits();
    }
    std::optional<double> number() {
        skipSpace();
        const auto start = at_;
        if (!numberGrammar())
            return std::nullopt;
        const auto value = parseDecimal(text_.substr(start, at_ - start));
        return value && std::isfinite(*value) ? value : std::nullopt;
    }

    std::string_view text_;
    std::size_t at_ = 0;
};

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
    std::set<Date> points;
    const auto take = [&](double seconds) { points.insert(Date{seconds + referenceDate}); };
    if (!NumberArrayReader(text).read(take))
        return std::nullopt;
    return points;
}

} // namespace kelpa
