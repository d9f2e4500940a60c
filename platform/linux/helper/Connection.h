#pragma once

#include <cstddef>
#include <initializer_list>
#include <map>
#include <memory>
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

/// One of many on one side whom lines are for.
class Addressee {
  public:
    virtual ~Addressee() = default;
    virtual void hear(const Message& message) = 0;
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

/// This side's end of a connection, while there is one. It never waits: what the other side does not take at
/// once is kept, up to a limit. What the other side sends is not trusted: a damaged line is left out, one
/// that is too long is skipped to its end, and neither takes more memory than one line may have. The class
/// that has the descriptor derives from this one, and tells it when there is something to read.
class Connection {
  public:
    static constexpr std::size_t longestLine = 524288;
    static constexpr std::size_t mostPending = 1048576;

    virtual ~Connection();
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;

    /// Does nothing while there is no connection. Needs no memory for messages of a size that was sent
    /// before.
    void send(std::initializer_list<std::string_view> fields);
    /// Lines with this number are the addressee's until he is removed, which he may be while he hears.
    void add(int number, Addressee& addressee) { addressees_[number] = &addressee; }
    void remove(int number) { addressees_.erase(number); }

  protected:
    Connection() = default;
    /// Begins anew, with nothing kept of what was before. The caller keeps owning `fd`, until `close` at
    /// least.
    void open(int fd);
    void close();
    /// Takes what has come and hands every message on; of a flood it takes some and leaves the rest for the
    /// next call. Those who hear may close the connection and do away with all of this.
    void read();
    /// Tries again to send what is kept.
    void flush();
    /// How many lines have come since `open`, also such as were no messages.
    [[nodiscard]] int lines() const;

  private:
    struct End;
    void deliver(const Message& message);

    /// Something that is for no addressee.
    virtual void said(const Message& message) = 0;
    /// Something was sent or is kept for it.
    virtual void sent() {}
    /// Something is kept: `flush` is to be called in a while.
    virtual void crowded() = 0;
    /// The other side is gone, or has not read for far too long; the connection is closed.
    virtual void lost() = 0;

    std::map<int, Addressee*> addressees_; ///< by number; owns nobody
    std::shared_ptr<End> end_;             ///< null while there is no connection
};

} // namespace kelpa::wire
