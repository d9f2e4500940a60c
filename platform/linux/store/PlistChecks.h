#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kelpa {

/// XML that the library can read without harm, as UTF-8 without a byte-order mark, from that or from UTF-16
/// of either order; nothing for what is no text, or is nested beyond reason. It need not be well-formed.
/// Numbers that are none have become texts.
[[nodiscard]] std::optional<std::string> tameXml(std::string_view bytes);

/// Whether the library can read a binary list without harm. What is used in many places counts in each of
/// them, as the library copies it there.
[[nodiscard]] bool isTameBinary(std::string_view bytes);

} // namespace kelpa
