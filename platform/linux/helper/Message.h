#pragma once

#include <initializer_list>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelpa::wire {

/// One line between the program and one of its helpers: a verb and its arguments. A field may hold any text.
class Message {
  public:
    Message() = default;
    explicit Message(std::vector<std::string> fields) : fields_(std::move(fields)) {}

    [[nodiscard]] const std::string& verb() const { return field(0); }
    /// Number of fields, the verb included.
    [[nodiscard]] std::size_t size() const { return fields_.size(); }
    /// The text of a field; empty beyond the last one, so that a short message needs no special care.
    [[nodiscard]] const std::string& field(std::size_t index) const;
    /// A field as a whole number; nothing when it is none or too large.
    [[nodiscard]] std::optional<int> number(std::size_t index) const;
    /// A field as a finite number with a full stop as decimal separator, whatever the locale.
    [[nodiscard]] std::optional<double> real(std::size_t index) const;
    /// The line that it is, without a line feed, as `decode` reads it.
    [[nodiscard]] std::string line() const;
    bool operator==(const Message&) const = default;

  private:
    std::vector<std::string> fields_;
};

/// Appends the line for `fields`, line feed included, to `line`. Needs no memory of its own.
void encode(std::initializer_list<std::string_view> fields, std::string& line);

/// Reads a line without its line feed; nothing when it is damaged.
[[nodiscard]] std::optional<Message> decode(std::string_view line);

/// A number as `Message::real` reads it.
[[nodiscard]] std::string realText(double value);

} // namespace kelpa::wire
