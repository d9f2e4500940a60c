#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kelpa {

/// How deep arrays and dictionaries may lie in each other. The library goes down one call a level, and takes
/// long for many of them.
inline constexpr int deepestPlist = 100;

/// Text as UTF-8 without a byte-order mark, from that or from UTF-16 of either order; nothing for what is no
/// text in the encoding that its first bytes tell.
[[nodiscard]] std::optional<std::string> asUtf8(std::string_view bytes);

/// Whether the library can read this XML without harm. It need not be well-formed.
[[nodiscard]] bool isTameXml(std::string_view xml);

/// The same of a binary list. What is used in many places counts in each of them, as the library copies it
/// there.
[[nodiscard]] bool isTameBinary(std::string_view bytes);

} // namespace kelpa
