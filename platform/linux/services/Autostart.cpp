#include "platform/linux/services/Autostart.h"

#include "platform/linux/Folders.h"
#include "platform/linux/store/FileAccess.h"

#include <cstdlib>
#include <sstream>
#include <stdexcept>
#include <system_error>

namespace kelpa {

namespace {

namespace fs = std::filesystem;

constexpr const char* groupLine = "[Desktop Entry]";

/// A name without a slash is looked up the way a shell does it.
fs::path onPath(const std::string& program) {
    if (program.find('/') != std::string::npos)
        return program;
    const char* variable = std::getenv("PATH");
    std::string_view rest = variable != nullptr ? variable : "/usr/bin:/bin";
    while (!rest.empty()) {
        const auto colon = rest.find(':');
        const auto candidate = fs::path(rest.substr(0, colon)) / program;
        std::error_code none;
        if (fs::is_regular_file(candidate, none))
            return candidate;
        rest = colon == std::string_view::npos ? std::string_view() : rest.substr(colon + 1);
    }
    return {};
}

std::vector<fs::path> entriesOf(const fs::path& folder) {
    std::vector<fs::path> entries;
    std::error_code none;
    for (fs::directory_iterator at(folder, none), end; !none && at != end; at.increment(none))
        if (at->path().extension() == ".desktop")
            entries.push_back(at->path());
    return entries;
}

/// An entry that cannot be read starts nothing, for the desktop as little as for us.
std::optional<DesktopEntry> entryAt(const fs::path& path) {
    try {
        const auto content = readFile(path.string());
        return content ? readDesktopEntry(content->bytes) : std::nullopt;
    } catch (const std::system_error&) {
        return std::nullopt;
    }
}

void replaceText(const fs::path& path, const std::string& text) {
    replaceFile(linkTarget(path.string()), text);
}

/// Takes the desktop's word for "do not start" out of an entry.
void unhide(const fs::path& path) {
    std::string text;
    const auto content = readFile(path.string());
    std::istringstream lines(content ? content->bytes : "");
    for (std::string line; std::getline(lines, line);)
        if (!line.starts_with("Hidden="))
            text += line + "\n";
    replaceText(path, text);
}

void hide(const fs::path& path) {
    unhide(path);
    auto text = readFile(path.string()).value_or(FileContent{}).bytes;
    const auto group = text.find(groupLine);
    if (group == std::string::npos)
        throw std::runtime_error(path.string() + " is no desktop entry");
    text.insert(group + std::string_view(groupLine).size(), "\nHidden=true");
    replaceText(path, text);
}

void removeOwn(const fs::path& path) {
    const auto entry = entryAt(path);
    if (entry && entry->ours)
        fs::remove(path);
}

} // namespace

AutostartFolders AutostartFolders::ofEnvironment() {
    AutostartFolders folders;
    if (const auto config = configHome())
        folders.user = fs::path(*config) / "autostart";
    const char* variable = std::getenv("XDG_CONFIG_DIRS");
    std::string_view rest = variable != nullptr && *variable != '\0' ? variable : "/etc/xdg";
    while (!rest.empty()) {
        const auto colon = rest.find(':');
        const fs::path folder(rest.substr(0, colon));
        if (folder.is_absolute())
            folders.system.push_back(folder / "autostart");
        rest = colon == std::string_view::npos ? std::string_view() : rest.substr(colon + 1);
    }
    return folders;
}

fs::path Autostart::ownPath() const {
    if (folders_.user.empty())
        throw std::runtime_error("there is no folder for settings");
    return folders_.user / (program_.identifier + ".desktop");
}

bool Autostart::startsUs(const Found& found) const {
    if (found.path.filename() == program_.identifier + ".desktop")
        return true;
    const auto program = onPath(found.entry.program);
    std::error_code none;
    return !program.empty() && fs::equivalent(program, program_.path, none);
}

std::vector<Autostart::Found> Autostart::entriesThatStartUs(const fs::path& folder) const {
    std::vector<Found> found;
    for (const auto& path : entriesOf(folder))
        if (const auto entry = entryAt(path); entry && startsUs({path, *entry}))
            found.push_back({path, *entry});
    return found;
}

std::vector<Autostart::Found> Autostart::systemEntries() const {
    std::vector<Found> all;
    for (const auto& folder : folders_.system)
        for (auto& found : entriesThatStartUs(folder))
            if (!found.entry.hidden)
                all.push_back(std::move(found));
    return all;
}

/// What the user put there, under whatever name.
std::vector<Autostart::Found> Autostart::userEntries() const {
    auto found = entriesThatStartUs(folders_.user);
    std::erase_if(found, [](const Found& one) { return one.entry.ours; });
    return found;
}

void Autostart::write(const fs::path& path, const std::string& keys) const {
    makeFolderOf(path.string());
    replaceText(path, std::string(groupLine) + "\nType=Application\nName=" + entryValue(program_.name) +
                          "\n" + keys + ownEntryKey + "=true\n");
}

void Autostart::enable() const {
    const auto own = ownPath();
    const auto packaged = systemEntries();
    for (const auto& found : packaged)
        removeOwn(folders_.user / found.path.filename());
    bool started = !packaged.empty();
    for (const auto& found : userEntries()) {
        if (found.entry.program.empty()) {
            fs::remove(found.path); // it says "do not start" and nothing else
            continue;
        }
        if (found.entry.hidden)
            unhide(found.path);
        started = true;
    }
    if (started)
        return removeOwn(own);
    write(own, "Icon=" + entryValue(program_.identifier) + "\nExec=" +
                   entryValue(execArgument(program_.path)) + "\nTryExec=" + entryValue(program_.path) +
                   "\nTerminal=false\nStartupNotify=false\nX-GNOME-Autostart-enabled=true\n");
}

void Autostart::disable() const {
    removeOwn(ownPath());
    for (const auto& found : userEntries())
        if (!found.entry.hidden)
            hide(found.path);
    for (const auto& found : systemEntries()) {
        const auto overriding = folders_.user / found.path.filename();
        if (!fs::exists(overriding))
            write(overriding, "Hidden=true\n");
    }
}

} // namespace kelpa
