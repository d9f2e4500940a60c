#pragma once

#include "logging/TextOutputStream.h"

#include <optional>
#include <string>
#include <string_view>

namespace kelpa {

/// The bytes of a UTF-8 text in another encoding, without loss; nothing if the text is no UTF-8 or the
/// encoding has no place for one of its characters.
[[nodiscard]] std::optional<std::string> encoded(std::string_view utf8, TextEncoding encoding);

} // namespace kelpa
