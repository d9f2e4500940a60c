#pragma once

#include "platform/ports/System.h"

#include <istream>
#include <string_view>

namespace kelpa {

/// What was set when the program was built, and what the running system says.
[[nodiscard]] SystemInfo linuxSystemInfo();

/// Up to three numbers that a text begins with: "12" is 12.0.0, "6.1.0-18-amd64" is 6.1.0; nothing for a text
/// that begins with none.
[[nodiscard]] std::optional<SystemInfo::Version> leadingVersion(std::string_view text);
/// The value of VERSION_ID in an os-release file, quoted or not.
[[nodiscard]] std::optional<std::string> versionId(std::istream&& osRelease);

} // namespace kelpa
