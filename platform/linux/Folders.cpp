#include "platform/linux/Folders.h"

#include "platform/linux/BuildConfig.h"

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <unistd.h>

namespace kelpa {

namespace {

/// A relative path in these variables means nothing and is passed over, as the desktop's rules have it.
std::optional<std::string> absolute(const char* variable) {
    const char* value = std::getenv(variable);
    if (value == nullptr || *value != '/')
        return std::nullopt;
    return value;
}

std::optional<std::string> folder(const char* variable, const char* belowHome) {
    if (auto own = absolute(variable))
        return own;
    const auto home = absolute("HOME");
    return home ? std::optional(*home + belowHome) : std::nullopt;
}

std::string ownFile() {
    std::error_code none;
    return std::filesystem::read_symlink("/proc/self/exe", none);
}

/// An image is mounted where $APPDIR says, and what was started from within it inherits its variables.
bool runsFromImage(const std::string& program) {
    std::error_code error;
    const auto mounted = std::filesystem::canonical(absolute("APPDIR").value_or(""), error);
    if (error)
        return false;
    const std::filesystem::path path(program);
    return std::mismatch(mounted.begin(), mounted.end(), path.begin(), path.end()).first == mounted.end();
}

} // namespace

std::optional<std::string> configHome() {
    return folder("XDG_CONFIG_HOME", "/.config");
}

std::optional<std::string> stateHome() {
    return folder("XDG_STATE_HOME", "/.local/state");
}

std::optional<std::string> dataHome() {
    return folder("XDG_DATA_HOME", "/.local/share");
}

std::optional<std::string> cacheHome() {
    return folder("XDG_CACHE_HOME", "/.cache");
}

std::optional<std::string> historyFolder() {
    const auto data = dataHome();
    return data ? std::optional(*data + "/" + build::identifier + "/history") : std::nullopt;
}

std::vector<std::filesystem::path> foldersIn(const char* variable, const char* usual) {
    const char* value = std::getenv(variable);
    std::istringstream list(value != nullptr && *value != '\0' ? value : usual);
    std::vector<std::filesystem::path> folders;
    for (std::string folder; std::getline(list, folder, ':');)
        folders.emplace_back(folder);
    return folders;
}

std::filesystem::path programOnPath(const std::string& name) {
    if (name.find('/') != std::string::npos)
        return name;
    std::error_code none;
    for (const auto& folder : foldersIn("PATH", "/usr/bin:/bin")) {
        const auto file = folder / name;
        if (std::filesystem::is_regular_file(file, none) && ::access(file.c_str(), X_OK) == 0)
            return file;
    }
    return {};
}

std::string programPath() {
    const std::string own = ownFile();
    const auto image = absolute("APPIMAGE");
    return image && runsFromImage(own) ? *image : own;
}

DataFolders dataFoldersOf(const std::string& program) {
    const auto beside = std::filesystem::path(program).parent_path();
    std::error_code none;
    const bool inBuildTree = std::filesystem::is_directory(beside / "share" / "kelpa", none);
    const auto share = inBuildTree ? beside / "share" : (beside / build::shareFolder).lexically_normal();
    return {share / "kelpa", share / "locale"};
}

DataFolders dataFolders() {
    return dataFoldersOf(ownFile());
}

} // namespace kelpa
