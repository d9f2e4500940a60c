#pragma once

#include <cstddef>
#include <functional>
#include <initializer_list>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

/// What the program and its helpers say to each other: a line a message, over a socket.
namespace kelpa::wire {

/// One line: a verb and its arguments, and before them a number where it is for one of many. A field may hold
/// any text.
class Message {
  public:
    Message() = default;
    explicit Message(std::vector<std::string> fields, std::optional<int> addressee = std::nullopt)
        : addressee_(addressee), fields_(std::move(fields)) {}

    /// The number of whom it is for; nothing where it is for the other side as a whole.
    [[nodiscard]] std::optional<int> addressee() const { return addressee_; }
    [[nodiscard]] const std::string& verb() const { return field(0); }
    /// Number of fields, the verb included.
    [[nodiscard]] std::size_t size() const { return fields_.size(); }
    /// The text of a field; empty beyond the last one, so that a short message needs no special care.
    [[nodiscard]] const std::string& field(std::size_t index) const;
    /// A field as a whole number; nothing when it is none or too large.
    [[nodiscard]] std::optional<int> number(std::size_t index) const;
    /// A field as a finite number with a full stop as decimal separator, whatever the locale.
    [[nodiscard]] std::optional<double> real(std::size_t index) const;
    bool operator==(const Message&) const = default;

  private:
    std::optional<int> addressee_;
    std::vector<std::string> fields_;
};

/// One of many on this side whom lines are for.
class Addressee {
  public:
    virtual ~Addressee() = default;
    virtual void hear(const Message& message) = 0;
};

/// Everybody on this side whom lines are for, by number. Owns nobody.
class Addressees {
  public:
    /// Until the addressee is removed, which he may be while he hears.
    void add(int number, Addressee& addressee) { byNumber_[number] = &addressee; }
    void remove(int number) { byNumber_.erase(number); }
    /// False for a line that is for none of them.
    [[nodiscard]] bool deliver(const Message& message) const;

  private:
    std::map<int, Addressee*> byNumber_;
};

// Between the program and a helper that it watches; see `AnswerWatch`.
/// ping: wants nothing but to be taken in.
inline constexpr std::string_view ping = "ping";
/// taken COUNT: the helper has taken in so many lines since its start, and what they ask for is done.
inline constexpr std::string_view taken = "taken";

/// Appends the line for `fields`, line feed included, to `line`. Needs no memory of its own.
void encode(std::initializer_list<std::string_view> fields, std::string& line);

/// Reads a line without its line feed; nothing when it is damaged.
[[nodiscard]] std::optional<Message> decode(std::string_view line);

/// A number as `Message::real` reads it.
[[nodiscard]] std::string realText(double value);

/// Reads messages from a descriptor. What the other side sends is not trusted: a damaged line is left out,
/// one that is too long is skipped to its end, and neither takes more memory than one line may have.
class LineReader {
  public:
    static constexpr std::size_t longestLine = 524288;
    enum class State { Open, Closed };

    /// The caller keeps owning `fd`.
    explicit LineReader(int fd) : fd_(fd) {}

    /// Takes what can be read now without waiting and hands over every message in it; of a flood it takes
    /// some and leaves the rest for the next call. `Closed` when the other end is gone; a line that it did
    /// not finish is dropped. `message` must not destroy the reader.
    State read(const std::function<void(const Message&)>& message);
    /// How many lines have ended so far, also such as were no messages.
    [[nodiscard]] int lines() const { return lines_; }

  private:
    void parse(std::string_view bytes, const std::function<void(const Message&)>& message);
    void finishLine(const std::function<void(const Message&)>& message);

    int fd_;
    std::string line_;
    bool tooLong_ = false;
    int lines_ = 0;
};

/// Writes messages to a socket and never waits: what the other side does not take at once is kept, up to a
/// limit, and tried again with the next message or `flush()`.
class LineWriter {
  public:
    static constexpr std::size_t mostPending = 1048576;
    enum class State {
        Idle,    ///< everything is on its way
        Pending, ///< some is kept: call `flush()` again in a while
        Broken,  ///< the other side is gone or has not read for far too long; nothing more is sent
    };

    /// The caller keeps owning `fd`.
    explicit LineWriter(int fd) : fd_(fd) {}

    /// Uses memory that it already has, once a message of this size was sent before.
    State send(std::initializer_list<std::string_view> fields);
    State flush();

  private:
    int fd_;
    std::string pending_;
    bool broken_ = false;
};

} // namespace kelpa::wire
