#include "platform/linux/store/PlistChecks.h"

#include <algorithm>
#include <iconv.h>
#include <utility>

namespace kelpa {

namespace {

using namespace std::string_view_literals;

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

/// Follows the tags as the library does, so that nothing makes it see more levels than are counted here.
class Nesting {
  public:
    explicit Nesting(std::string_view xml) : rest_(xml) {}

    bool isTame() {
        for (auto at = rest_.find('<'); at != std::string_view::npos; at = rest_.find('<')) {
            rest_.remove_prefix(at);
            if (!skip("<!--", "-->") && !skip("<![CDATA[", "]]>") && !declaration() && !tag())
                return false;
            if (depth_ > deepestPlist)
                return false;
        }
        return true;
    }

  private:
    bool skip(std::string_view begin, std::string_view end) {
        if (!rest_.starts_with(begin))
            return false;
        const auto close = rest_.find(end, begin.size());
        rest_.remove_prefix(close == std::string_view::npos ? rest_.size() : close + end.size());
        return true;
    }
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

} // namespace

std::optional<std::string> asUtf8(std::string_view bytes) {
    const char* encoding = encodingOf(bytes);
    if (*encoding != '\0')
        return converted(bytes, encoding);
    constexpr auto mark = "\xEF\xBB\xBF"sv;
    return std::string(bytes.starts_with(mark) ? bytes.substr(mark.size()) : bytes);
}

bool isTameXml(std::string_view xml) {
    // The library knows other forms as well, which nobody has asked for.
    const auto first = xml.find_first_not_of(" \t\r\n");
    return first != std::string_view::npos && xml[first] == '<' && Nesting(xml).isTame();
}

} // namespace kelpa
