#pragma once

#include "platform/linux/services/Portal.h"

#include <filesystem>
#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

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

/// Where the desktop looks for what it starts at log-in. An entry of the user's folder takes the place of one
/// of the same name in the system's.
struct AutostartFolders {
    std::filesystem::path user;
    std::vector<std::filesystem::path> system;

    /// As the environment says; nothing in `user` when there is no home.
    [[nodiscard]] static AutostartFolders ofEnvironment();
};

/// What an autostart entry is to start.
struct AutostartProgram {
    std::string identifier; ///< the entry is `identifier`.desktop
    std::string name;       ///< as it is shown in the desktop's list of what it starts
    std::string path;       ///< of the program file
};

/// Writes an error into the system's own log.
void writeToSystemLog(const std::string& line);

/// An entry among those programs that the desktop starts at log-in; in a sandbox the desktop keeps it.
/// `portal` gives the desktop's portal in a sandbox and null outside; `fail` writes a line for the machine's
/// administrator.
[[nodiscard]] std::unique_ptr<LoginItem>
makeLinuxLoginItem(AutostartFolders folders, AutostartProgram program, std::function<Portal*()> portal,
                   std::function<void(const std::string& line)> fail = writeToSystemLog);

} // namespace kelpa
