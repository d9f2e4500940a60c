#pragma once

#include <filesystem>
#include <optional>
#include <string>
#include <vector>

namespace kelpa {

/// The user's folder for settings ($XDG_CONFIG_HOME, else ~/.config), for state ($XDG_STATE_HOME, else
/// ~/.local/state), for data ($XDG_DATA_HOME, else ~/.local/share) or for what can be fetched again
/// ($XDG_CACHE_HOME, else ~/.cache); nothing when neither the variable nor HOME holds an absolute path.
[[nodiscard]] std::optional<std::string> configHome();
[[nodiscard]] std::optional<std::string> stateHome();
[[nodiscard]] std::optional<std::string> dataHome();
[[nodiscard]] std::optional<std::string> cacheHome();
/// The program's folder for the history; nothing where there is no folder for data.
[[nodiscard]] std::optional<std::string> historyFolder();

/// What a variable lists with colons between, or `usual`, a list as well, where it is not set or empty.
[[nodiscard]] std::vector<std::filesystem::path> foldersIn(const char* variable, const char* usual);
/// The program of that name as a shell finds it on the PATH, of which a name with a slash has no need; empty
/// where there is none.
[[nodiscard]] std::filesystem::path programOnPath(const std::string& name);

/// What a person, or the desktop, starts to run this program: its own file, or the image that it is packed
/// in and runs from.
[[nodiscard]] std::string programPath();

/// Where the program's data lies.
struct DataFolders {
    std::string data;   ///< icons, symbols, the icon font
    std::string locale; ///< the string tables
};

/// The data that belongs to a program file: in `share` beside it in a build tree, in the share folder
/// of an installed one, usually `../share`.
[[nodiscard]] DataFolders dataFoldersOf(const std::string& program);
/// The data of the running program.
[[nodiscard]] DataFolders dataFolders();

} // namespace kelpa
