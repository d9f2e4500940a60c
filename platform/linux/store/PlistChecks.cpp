#include "platform/linux/store/PlistChecks.h"

#include "base/Text.h"

#include <algorithm>
#include <cctype>
#include <charconv>
#include <cstdint>
#include <iconv.h>
#include <utility>

namespace kelpa {

namespace {

using namespace std::string_view_literals;

/// How deep arrays and dictionaries may lie in each other. The library goes down one call a level, and takes
/// long for many of them.
constexpr int deepest = 100;
/// About the memory of all that is read, copies included, and of one value beside its bytes: far more than
/// any settings need.
constexpr std::uint64_t most = 8 << 20;
constexpr std::uint64_t costOfOne = 64;

/// Walks over a list as the library will, which makes of each use of an object a new one.
class Walk {
  public:
    explicit Walk(std::string_view bytes) : bytes_(bytes) {}

    bool isTame() {
        constexpr std::size_t head = 8, trailer = 32;
        if (bytes_.size() < head + trailer)
            return false;
        const std::size_t at = bytes_.size() - trailer;
        offsetSize_ = number(at + 6, 1);
        referenceSize_ = number(at + 7, 1);
        objects_ = number(at + 8, 8);
        table_ = number(at + 24, 8);
        const bool sizesFit =
            offsetSize_ >= 1 && offsetSize_ <= 8 && referenceSize_ >= 1 && referenceSize_ <= 8;
        return sizesFit && object(number(at + 16, 8), 0);
    }

  private:
    enum Kind : std::uint64_t {
        Data = 4,
        Text = 5,
        WideText = 6,
        Array = 10,
        OrderedSet = 11,
        Set = 12,
        Dictionary = 13
    };

    /// Of so many bytes, the highest first; beyond all bounds where they are not there.
    [[nodiscard]] std::uint64_t number(std::uint64_t at, std::uint64_t size) const {
        if (at > bytes_.size() || size > bytes_.size() - at)
            return UINT64_MAX;
        std::uint64_t value = 0;
        for (std::uint64_t i = 0; i < size; ++i)
            value = value << 8U | static_cast<unsigned char>(bytes_[at + i]);
        return value;
    }
    bool object(std::uint64_t index, int depth) {
        if (index >= objects_ || index >= bytes_.size() || depth > deepest)
            return false;
        const std::uint64_t at = number(table_ + index * offsetSize_, offsetSize_);
        const std::uint64_t marker = number(at, 1);
        return marker != UINT64_MAX && value(marker >> 4U, marker & 0xFU, at + 1, depth);
    }
    bool value(std::uint64_t kind, std::uint64_t length, std::uint64_t at, int depth) {
        const bool isLong = length == 0xF && kind >= Data;
        if (isLong) {
            const std::uint64_t size = std::uint64_t{1} << (number(at, 1) & 0x3U);
            length = number(at + 1, size);
            at += 1 + size;
        }
        if (length > bytes_.size() || !spend(costOfOne + length))
            return false;
        const std::uint64_t references = kind == Dictionary ? 2 * length : length;
        return kind < Array || kind > Dictionary || contents(references, at, depth);
    }
    bool contents(std::uint64_t references, std::uint64_t at, int depth) {
        for (std::uint64_t i = 0; i < references; ++i)
            if (!object(number(at + i * referenceSize_, referenceSize_), depth + 1))
                return false;
        return true;
    }
    bool spend(std::uint64_t cost) {
        spent_ += cost;
        return spent_ <= most;
    }

    std::string_view bytes_;
    std::uint64_t offsetSize_ = 0;
    std::uint64_t referenceSize_ = 0;
    std::uint64_t objects_ = 0;
    std::uint64_t table_ = 0;
    std::uint64_t spent_ = 0;
};

/// The name of the encoding, as `iconv` knows it; empty for UTF-8.
const char* encodingOf(std::string_view bytes) {
    if (bytes.starts_with("\xFF\xFE"sv) || bytes.starts_with("\xFE\xFF"sv))
        return "UTF-16";
    if (bytes.starts_with("<\0"sv))
        return "UTF-16LE";
    return bytes.starts_with("\0<"sv) ? "UTF-16BE" : "";
}

std::optional<std::string> converted(std::string_view bytes, const char* encoding) {
    constexpr std::size_t mostPerUnit = 3; // bytes in UTF-8 for two in UTF-16
    const auto none = reinterpret_cast<iconv_t>(-1);
    const iconv_t conversion = iconv_open("UTF-8", encoding);
    if (conversion == none)
        return std::nullopt;
    std::string input(bytes), output(bytes.size() / 2 * mostPerUnit + mostPerUnit, '\0');
    char *from = input.data(), *to = output.data();
    std::size_t left = input.size(), room = output.size();
    const bool whole =
        iconv(conversion, &from, &left, &to, &room) != static_cast<std::size_t>(-1) && left == 0;
    iconv_close(conversion);
    output.resize(output.size() - room);
    return whole ? std::optional(std::move(output)) : std::nullopt;
}

/// The length of the comment or the section of plain characters that a text begins with, which goes to the
/// end where it is not closed; 0 where none begins.
std::size_t sectionAt(std::string_view xml) {
    for (const auto& [begin, end] : {std::pair("<!--"sv, "-->"sv), std::pair("<![CDATA["sv, "]]>"sv)})
        if (xml.starts_with(begin)) {
            const auto close = xml.find(end, begin.size());
            return close == std::string_view::npos ? xml.size() : close + end.size();
        }
    return 0;
}

/// Follows the tags as the library does, so that nothing makes it see more levels than are counted here.
class Nesting {
  public:
    explicit Nesting(std::string_view xml) : rest_(xml) {}

    bool isTame() {
        for (auto at = rest_.find('<'); at != std::string_view::npos; at = rest_.find('<')) {
            rest_.remove_prefix(at);
            if (const auto section = sectionAt(rest_))
                rest_.remove_prefix(section);
            else if (!declaration() && !tag())
                return false;
            if (depth_ > deepest)
                return false;
        }
        return true;
    }

  private:
    /// Such a thing may hold what looks like tags and is none, so it only may stand where no level has begun.
    bool declaration() {
        if (begun_ || !(rest_.starts_with("<?") || rest_.starts_with("<!")))
            return false;
        rest_.remove_prefix(2);
        return true;
    }
    bool tag() {
        const auto end = std::min(rest_.find('>'), rest_.size() - 1);
        const std::string_view inside = rest_.substr(1, end - 1);
        rest_.remove_prefix(end + 1);
        // An end of the tag that stands in quotation marks is none.
        if (inside.find('<') != std::string_view::npos ||
            std::count(inside.begin(), inside.end(), '"') % 2 != 0)
            return false;
        if (inside.starts_with('?') || inside.starts_with('!'))
            return false;
        count(inside);
        return true;
    }
    void count(std::string_view inside) {
        const std::string_view name = inside.substr(0, inside.find_first_of(" \t\r\n/", 1));
        if (name == "array" || name == "dict") {
            begun_ = true;
            depth_ += inside.ends_with('/') ? 0 : 1;
        } else if (name == "/array" || name == "/dict") {
            depth_ = std::max(0, depth_ - 1);
        }
    }

    std::string_view rest_;
    int depth_ = 0;
    bool begun_ = false;
};

constexpr std::string_view blanks = " \t\r\n";

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

/// What `strtod` reads under the C locale to its end.
bool isReal(std::string_view text) {
    const auto number = withoutSign(text);
    double value = 0;
    const auto [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    return !number.starts_with('-') && error != std::errc::invalid_argument &&
           end == number.data() + number.size();
}

/// Copies XML piece by piece and turns numbers that are none (`<integer>abc</integer>`) into texts: the
/// library would read them as 0, and a 0 that nobody chose could do harm where the default does none.
class NumberMender {
  public:
    explicit NumberMender(std::string_view xml) : rest_(xml) { result_.reserve(xml.size()); }

    std::string run() {
        while (!rest_.empty())
            if (const auto section = sectionAt(rest_))
                copy(section);
            else if (!number("integer", isInteger) && !number("real", isReal))
                copy(std::max<std::size_t>(1, std::min(rest_.find('<', 1), rest_.size())));
        return std::move(result_);
    }

  private:
    void copy(std::size_t count) {
        result_ += rest_.substr(0, count);
        rest_.remove_prefix(count);
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
        if (!valid(trimmed(content, blanks)))
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

std::optional<std::string> asUtf8(std::string_view bytes) {
    const char* encoding = encodingOf(bytes);
    if (*encoding != '\0')
        return converted(bytes, encoding);
    constexpr auto mark = "\xEF\xBB\xBF"sv;
    return std::string(bytes.starts_with(mark) ? bytes.substr(mark.size()) : bytes);
}

} // namespace

std::optional<std::string> tameXml(std::string_view bytes) {
    const auto xml = asUtf8(bytes);
    // The library knows other forms as well, which nobody has asked for.
    const auto first = xml ? xml->find_first_not_of(blanks) : std::string::npos;
    if (first == std::string::npos || (*xml)[first] != '<' || !Nesting(*xml).isTame())
        return std::nullopt;
    return NumberMender(*xml).run();
}

bool isTameBinary(std::string_view bytes) {
    return Walk(bytes).isTame();
}

} // namespace kelpa
