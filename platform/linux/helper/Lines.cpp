#include "platform/linux/helper/Lines.h"

#include "base/Text.h"

#include <algorithm>
#include <array>
#include <cerrno>
#include <cmath>
#include <locale>
#include <sstream>
#include <sys/socket.h>

namespace kelpa::wire {

namespace {

/// A side that never stops writing must not keep us from everything else.
constexpr int mostRounds = 64;
constexpr std::size_t usualLine = 65536;

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

bool Addressees::deliver(const Message& message) const {
    const auto found = message.addressee() ? byNumber_.find(*message.addressee()) : byNumber_.end();
    if (found == byNumber_.end())
        return false;
    found->second->hear(message);
    return true;
}

void encode(std::initializer_list<std::string_view> fields, std::string& line) {
    bool first = true;
    for (const std::string_view field : fields) {
        if (!first)
            line += '\t';
        first = false;
        appendEscaped(field, line);
    }
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
    const auto addressee = wholeNumber<int>(fields.front());
    if (addressee)
        fields.erase(fields.begin());
    return Message(std::move(fields), addressee);
}

std::string realText(double value) {
    std::ostringstream stream;
    stream.imbue(std::locale::classic());
    stream << value;
    return stream.str();
}

LineReader::State LineReader::read(const std::function<void(const Message&)>& message) {
    std::array<char, 4096> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by recv
    for (int round = 0; round < mostRounds;) {
        const ssize_t count = ::recv(fd_, buffer.data(), buffer.size(), MSG_DONTWAIT);
        if (count > 0) {
            parse({buffer.data(), static_cast<std::size_t>(count)}, message);
            ++round;
        } else if (count == 0 || errno != EINTR) {
            return count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK) ? State::Open : State::Closed;
        }
    }
    return State::Open;
}

void LineReader::parse(std::string_view bytes, const std::function<void(const Message&)>& message) {
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        if (line_.size() + end > longestLine)
            tooLong_ = true;
        if (tooLong_)
            line_.clear();
        else
            line_.append(bytes.substr(0, end));
        if (end == bytes.size())
            return;
        finishLine(message);
        bytes.remove_prefix(end + 1);
    }
}

void LineReader::finishLine(const std::function<void(const Message&)>& message) {
    const auto decoded = tooLong_ ? std::nullopt : decode(line_);
    line_.clear();
    // One long message must not take its room for the rest of the day.
    if (line_.capacity() > usualLine)
        line_.shrink_to_fit();
    tooLong_ = false;
    ++lines_;
    if (decoded)
        message(*decoded);
}

LineWriter::State LineWriter::send(std::initializer_list<std::string_view> fields) {
    if (broken_)
        return State::Broken;
    encode(fields, pending_);
    return flush();
}

LineWriter::State LineWriter::flush() {
    while (!broken_ && !pending_.empty()) {
        const ssize_t count = ::send(fd_, pending_.data(), pending_.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
        if (count >= 0)
            pending_.erase(0, static_cast<std::size_t>(count));
        else if (errno == EAGAIN || errno == EWOULDBLOCK || errno == ENOBUFS)
            break;
        else if (errno != EINTR)
            broken_ = true;
    }
    broken_ = broken_ || pending_.size() > mostPending;
    if (broken_)
        return State::Broken;
    return pending_.empty() ? State::Idle : State::Pending;
}

} // namespace kelpa::wire
