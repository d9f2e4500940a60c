#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kelpa {

/// One argument of an Exec key: quoted where it must be, so that the desktop passes exactly `argument` on.
[[nodiscard]] std::string execArgument(const std::string& argument);
/// A string value of a desktop entry.
[[nodiscard]] std::string entryValue(const std::string& text);

/// What an autostart entry says of itself that decides whether it starts something.
struct DesktopEntry {
    std::string program; ///< first argument of Exec; empty when there is none
    bool hidden = false; ///< it stands for "do not start"
    bool ours = false;   ///< this program wrote it
};

/// Reads a desktop entry file's text; nothing when it has no such group.
[[nodiscard]] std::optional<DesktopEntry> readDesktopEntry(std::string_view text);

/// Marks what this program wrote, so that it never changes an entry of somebody else's.
inline constexpr const char* ownEntryKey = "X-Kelpa-Managed";

} // namespace kelpa
