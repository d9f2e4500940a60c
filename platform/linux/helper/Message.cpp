#include "platform/linux/helper/Message.h"

#include "base/Text.h"

#include <cmath>
#include <locale>
#include <sstream>

namespace kelpa::wire {

namespace {

constexpr std::string_view plain = "\\\t\n\r";
constexpr std::string_view escaped = "\\tnr";

void appendEscaped(std::string_view text, std::string& line) {
    for (const char character : text) {
        const auto found = plain.find(character);
        if (found == std::string_view::npos) {
            line += character;
        } else {
            line += '\\';
            line += escaped[found];
        }
    }
}

template <class Fields>
void appendFields(const Fields& fields, std::string& line) {
    bool first = true;
    for (const std::string_view field : fields) {
        if (!first)
            line += '\t';
        first = false;
        appendEscaped(field, line);
    }
}

/// Appends the text of one field; false when an escape is unknown or cut off.
bool appendPlain(std::string_view text, std::string& field) {
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != '\\') {
            field += text[i];
            continue;
        }
        const auto found = ++i < text.size() ? escaped.find(text[i]) : std::string_view::npos;
        if (found == std::string_view::npos)
            return false;
        field += plain[found];
    }
    return true;
}

} // namespace

const std::string& Message::field(std::size_t index) const {
    static const std::string none;
    return index < fields_.size() ? fields_[index] : none;
}

std::optional<int> Message::number(std::size_t index) const {
    return wholeNumber<int>(field(index));
}

std::optional<double> Message::real(std::size_t index) const {
    std::istringstream stream(field(index));
    stream.imbue(std::locale::classic());
    double value = 0;
    if (!(stream >> value) || stream.peek() != std::istringstream::traits_type::eof() ||
        !std::isfinite(value))
        return std::nullopt;
    return value;
}

std::string Message::line() const {
    std::string line;
    appendFields(fields_, line);
    return line;
}

void encode(std::initializer_list<std::string_view> fields, std::string& line) {
    appendFields(fields, line);
    line += '\n';
}

std::optional<Message> decode(std::string_view line) {
    std::vector<std::string> fields;
    for (std::size_t start = 0; start <= line.size();) {
        const std::size_t end = std::min(line.find('\t', start), line.size());
        if (!appendPlain(line.substr(start, end - start), fields.emplace_back()))
            return std::nullopt;
        start = end + 1;
    }
    return Message(std::move(fields));
}

std::string realText(double value) {
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << value;
    return stream.str();
}

} // namespace kelpa::wire
