#include "platform/linux/helper/Connection.h"

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

/// What is known of one connection.
struct Connection::End {
    explicit End(int descriptor) : fd(descriptor) {}

    bool receive(std::vector<Message>& messages);
    void parse(std::string_view bytes, std::vector<Message>& messages);
    void finishLine(std::vector<Message>& messages);
    bool transmit();

    int fd;
    bool open = true;
    std::string line; ///< as far as it has come
    bool tooLong = false;
    int lines = 0;
    std::string pending; ///< to be sent
};

/// False when the other side is gone; a line that it did not finish is dropped.
bool Connection::End::receive(std::vector<Message>& messages) {
    std::array<char, 4096> buffer; // NOLINT(cppcoreguidelines-pro-type-member-init): filled by recv
    for (int round = 0; round < mostRounds;) {
        const ssize_t count = ::recv(fd, buffer.data(), buffer.size(), MSG_DONTWAIT);
        if (count > 0) {
            parse({buffer.data(), static_cast<std::size_t>(count)}, messages);
            ++round;
        } else if (count == 0 || errno != EINTR) {
            return count < 0 && (errno == EAGAIN || errno == EWOULDBLOCK);
        }
    }
    return true;
}

void Connection::End::parse(std::string_view bytes, std::vector<Message>& messages) {
    while (!bytes.empty()) {
        const std::size_t end = std::min(bytes.find('\n'), bytes.size());
        if (line.size() + end > longestLine)
            tooLong = true;
        if (tooLong)
            line.clear();
        else
            line.append(bytes.substr(0, end));
        if (end == bytes.size())
            return;
        finishLine(messages);
        bytes.remove_prefix(end + 1);
    }
}

void Connection::End::finishLine(std::vector<Message>& messages) {
    if (auto message = tooLong ? std::nullopt : decode(line))
        messages.push_back(std::move(*message));
    line.clear();
    // One long message must not take its room for the rest of the day.
    if (line.capacity() > usualLine)
        line.shrink_to_fit();
    tooLong = false;
    ++lines;
}

/// False when the other side is gone or takes nothing.
bool Connection::End::transmit() {
    while (!pending.empty()) {
        const ssize_t count = ::send(fd, pending.data(), pending.size(), MSG_DONTWAIT | MSG_NOSIGNAL);
        if (count >= 0)
            pending.erase(0, static_cast<std::size_t>(count));
        else if (errno == EAGAIN || errno == EWOULDBLOCK || errno == ENOBUFS)
            break;
        else if (errno != EINTR)
            return false;
    }
    return pending.size() <= mostPending;
}

Connection::~Connection() {
    close();
}

void Connection::open(int fd) {
    close();
    end_ = std::make_shared<End>(fd);
}

void Connection::close() {
    if (end_)
        end_->open = false;
    end_ = nullptr;
}

void Connection::send(std::initializer_list<std::string_view> fields) {
    if (!end_)
        return;
    encode(fields, end_->pending);
    sent();
    flush();
}

void Connection::flush() {
    if (!end_)
        return;
    if (!end_->transmit()) {
        close();
        lost();
    } else if (!end_->pending.empty()) {
        crowded();
    }
}

void Connection::read() {
    // Only what is held here may be looked at once those who hear have closed it.
    const auto end = end_;
    if (!end)
        return;
    std::vector<Message> messages;
    const bool there = end->receive(messages);
    for (const Message& message : messages)
        if (end->open)
            deliver(message);
    if (!there && end->open) {
        close();
        lost();
    }
}

void Connection::deliver(const Message& message) {
    const auto found = message.addressee() ? addressees_.find(*message.addressee()) : addressees_.end();
    if (found == addressees_.end())
        said(message);
    else
        found->second->hear(message);
}

int Connection::lines() const {
    return end_ ? end_->lines : 0;
}

} // namespace kelpa::wire
