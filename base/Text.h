#pragma once

#include <array>
#include <charconv>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelpa {

/// The string table of the user's language: gives the translation of `key`, or `key` itself when there is
/// none.
using Translations = std::function<std::string(const std::string& key)>;

/// Chooses the string table; without one every text stands for itself.
void setTranslations(Translations table);

/// Marks a text that is looked up later, for the check of the catalogues.
constexpr const char* translatable(const char* key) {
    return key;
}

/// The user's language for a text that is its own key; the key itself where there is no translation.
[[nodiscard]] std::string localized(const std::string& key);

/// Whole seconds as the program shows them: below 1 gives "00:00", otherwise "mm:ss" with the hours glued on
/// in front ("0102:05") once there is one. Short enough never to allocate for a countdown of a day.
[[nodiscard]] std::string timeString(std::int64_t seconds);

/// Reads what `timeString` writes: the last two digits before the colon are minutes, all before them hours.
/// 0 for a text of another form.
[[nodiscard]] std::int64_t secondsOf(std::string_view timeText);

/// The shortest decimal text that reads back as the same number, always with a fractional part ("1.0"),
/// whatever the process locale; "inf", "-inf" and "nan" where it is no number.
[[nodiscard]] std::string decimalText(double value);

/// Reads a whole text as a whole number; nothing if anything else is in it, a sign that `Number` does not
/// have included, or if it is too large for that.
template <typename Number>
[[nodiscard]] std::optional<Number> wholeNumber(std::string_view text) {
    Number value = 0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    const bool whole = error == std::errc() && end == text.data() + text.size();
    return whole ? std::optional(value) : std::nullopt;
}

/// The numbers of a text in a form such as "0000-00-00", in which each 0 stands for a digit and everything
/// else for itself; empty for a text in another form.
[[nodiscard]] std::vector<int> numbersIn(std::string_view text, std::string_view form);

/// Reads a whole text as a decimal number, whatever the process locale; nothing if anything else is in it.
[[nodiscard]] std::optional<double> parseDecimal(std::string_view text);

/// The text without those of the characters in `blanks` that stand at its ends.
[[nodiscard]] std::string_view trimmed(std::string_view text, std::string_view blanks);

/// Replaces every occurrence of `from`, which must not be empty.
[[nodiscard]] std::string replacingAll(std::string text, std::string_view from, std::string_view to);

/// The text with its control characters written as "\n", "\t" or "\x1b", so that it stays on its line and
/// rules no terminal. It is for showing, and cannot be read back.
[[nodiscard]] std::string printable(std::string_view text);

/// The text, or of one that has more bytes its beginning in whole characters and an ellipsis, no longer than
/// `mostBytes`, which are at least those of the ellipsis.
[[nodiscard]] std::string shortened(const std::string& text, std::size_t mostBytes);

/// Puts each argument where the text names its place: "%1$s" is the first, "%9$s" the last that there can be.
/// A place without an argument stays as it is.
[[nodiscard]] std::string withArguments(std::string_view text, const std::vector<std::string>& arguments);

/// The name of an enumeration's case, of names that stand in the order of the cases.
template <class E, std::size_t n>
[[nodiscard]] constexpr std::string_view nameOf(const std::array<std::string_view, n>& names, E value) {
    return names.at(static_cast<std::size_t>(value));
}
/// The case of a name; nothing where it is the name of none.
template <class E, std::size_t n>
[[nodiscard]] constexpr std::optional<E> caseOf(const std::array<std::string_view, n>& names,
                                                std::string_view name) {
    for (std::size_t i = 0; i < n; ++i)
        if (names[i] == name)
            return static_cast<E>(i);
    return std::nullopt;
}

} // namespace kelpa
