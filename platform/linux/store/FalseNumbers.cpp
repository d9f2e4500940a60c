#include "platform/linux/store/PlistDocument.h"

#include <algorithm>
#include <cctype>

namespace kelpa {

namespace {

constexpr std::string_view blanks = " \t\r\n";

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(blanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(blanks) - first + 1);
}

bool allOf(std::string_view text, int (*kind)(int)) {
    return !text.empty() && std::all_of(text.begin(), text.end(),
                                        [kind](char c) { return kind(static_cast<unsigned char>(c)) != 0; });
}

std::string_view withoutSign(std::string_view text) {
    return !text.empty() && (text.front() == '-' || text.front() == '+') ? text.substr(1) : text;
}

bool isInteger(std::string_view text) {
    const auto digits = withoutSign(text);
    if (digits.starts_with("0x") || digits.starts_with("0X"))
        return allOf(digits.substr(2), std::isxdigit);
    return allOf(digits, std::isdigit);
}

/// What `strtod` reads under the C locale to its end; the few names of what is no number are let through.
bool isReal(std::string_view text) {
    const auto number = withoutSign(text);
    if (number == "nan" || number == "inf" || number == "infinity")
        return true;
    const auto exponent = number.find_first_of("eE");
    const auto mantissa = number.substr(0, exponent);
    if (exponent != std::string_view::npos && !allOf(withoutSign(number.substr(exponent + 1)), std::isdigit))
        return false;
    const auto point = mantissa.find('.');
    if (point == std::string_view::npos)
        return allOf(mantissa, std::isdigit);
    std::string digits(mantissa.substr(0, point));
    digits += mantissa.substr(point + 1);
    return allOf(digits, std::isdigit);
}

/// Copies the document piece by piece; each reader takes one piece from the front.
class Scanner {
  public:
    explicit Scanner(std::string_view xml) : rest_(xml) { result_.reserve(xml.size()); }

    std::string run() {
        while (!rest_.empty())
            if (!section("<!--", "-->") && !section("<![CDATA[", "]]>") && !number("integer", isInteger) &&
                !number("real", isReal))
                copy(std::max<std::size_t>(1, std::min(rest_.find('<', 1), rest_.size())));
        return std::move(result_);
    }

  private:
    void copy(std::size_t count) {
        result_ += rest_.substr(0, count);
        rest_.remove_prefix(count);
    }

    bool section(std::string_view begin, std::string_view end) {
        if (!rest_.starts_with(begin))
            return false;
        const auto close = rest_.find(end, begin.size());
        copy(close == std::string_view::npos ? rest_.size() : close + end.size());
        return true;
    }

    bool number(std::string_view name, bool (*valid)(std::string_view)) {
        const std::string open = "<" + std::string(name) + ">", close = "</" + std::string(name) + ">";
        if (rest_.starts_with("<" + std::string(name) + "/>"))
            return replace(name.size() + 3, "");
        if (!rest_.starts_with(open))
            return false;
        const auto end = rest_.find(close);
        if (end == std::string_view::npos)
            return false;
        const auto content = rest_.substr(open.size(), end - open.size());
        if (!valid(trimmed(content)))
            return replace(end + close.size(), content);
        copy(end + close.size());
        return true;
    }

    bool replace(std::size_t count, std::string_view content) {
        result_.append("<string>").append(content).append("</string>");
        rest_.remove_prefix(count);
        return true;
    }

    std::string_view rest_;
    std::string result_;
};

} // namespace

std::string withoutFalseNumbers(std::string_view xml) {
    return Scanner(xml).run();
}

} // namespace kelpa
