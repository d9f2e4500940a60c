#include "platform/linux/services/LinuxLoginItem.h"

#include "base/Text.h"
#include "platform/linux/Folders.h"
#include "platform/linux/store/FileAccess.h"

#include <sstream>
#include <stdexcept>
#include <syslog.h>
#include <system_error>

namespace kelpa {

namespace {

namespace fs = std::filesystem;

constexpr std::string_view groupLine = "[Desktop Entry]";
/// Marks what this program wrote, so that it never changes an entry of somebody else's.
constexpr std::string_view ownEntryKey = "X-Kelpa-Managed";
constexpr std::string_view blanks = " \t\r";
constexpr std::string_view reserved = " \t\n\"'\\><~|&;$*?#()`";
constexpr std::string_view escapedInQuotes = "\"`$\\";

/// Undoes `entryValue`.
std::string plainValue(std::string_view value) {
    std::string plain;
    for (std::size_t at = 0; at < value.size(); ++at) {
        if (value[at] != '\\' || at + 1 == value.size()) {
            plain += value[at];
            continue;
        }
        const char next = value[++at];
        plain += next == 's' ? ' ' : next == 'n' ? '\n' : next == 't' ? '\t' : next == 'r' ? '\r' : next;
    }
    return plain;
}

/// The first argument of a command line as the desktop splits it.
std::string firstArgument(std::string_view command) {
    std::string argument;
    bool quoted = false;
    for (std::size_t at = 0; at < command.size(); ++at) {
        if (!quoted && (command[at] == ' ' || command[at] == '\t'))
            break;
        if (command[at] == '"')
            quoted = !quoted;
        else if (quoted && command[at] == '\\' && at + 1 < command.size())
            argument += command[++at];
        else if (command.substr(at, 2) == "%%")
            argument += command[at++];
        else
            argument += command[at];
    }
    return argument;
}

void readKey(DesktopEntry& entry, std::string_view key, std::string_view value) {
    if (key == "Exec")
        entry.program = firstArgument(plainValue(value));
    else if (key == "Hidden")
        entry.hidden = value == "true";
    else if (key == ownEntryKey)
        entry.ours = value == "true";
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

/// Puts the desktop's word for "do not start" into an entry, or takes it out.
void setHidden(const fs::path& path, bool hidden) {
    const auto content = readFile(path.string());
    std::istringstream lines(content ? content->bytes : "");
    std::string text;
    for (std::string line; std::getline(lines, line);) {
        if (!line.starts_with("Hidden="))
            text += line + "\n";
        if (hidden && trimmed(line, blanks) == groupLine)
            text += "Hidden=true\n";
    }
    replaceText(path, text);
}

void removeOwn(const fs::path& path) {
    const auto entry = entryAt(path);
    if (entry && entry->ours)
        fs::remove(path);
}

} // namespace

std::string execArgument(const std::string& argument) {
    const bool quotes = argument.empty() || argument.find_first_of(reserved) != std::string::npos;
    std::string written;
    for (const char character : argument) {
        if (quotes && escapedInQuotes.find(character) != std::string_view::npos)
            written += '\\';
        written += character == '%' ? "%%" : std::string(1, character);
    }
    return quotes ? '"' + written + '"' : written;
}

std::string entryValue(const std::string& text) {
    std::string written = replacingAll(text, "\\", "\\\\");
    for (const auto& [character, escape] : {std::pair("\n", "\\n"), {"\t", "\\t"}, {"\r", "\\r"}})
        written = replacingAll(written, character, escape);
    return written;
}

std::optional<DesktopEntry> readDesktopEntry(std::string_view text) {
    std::optional<DesktopEntry> entry;
    bool inGroup = false;
    while (!text.empty()) {
        const auto end = text.find('\n');
        const auto line = trimmed(text.substr(0, end), blanks);
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
        if (line.starts_with('[')) {
            inGroup = line == groupLine;
            if (inGroup && !entry)
                entry.emplace();
            continue;
        }
        const auto equals = line.find('=');
        if (inGroup && !line.starts_with('#') && equals != std::string_view::npos)
            readKey(*entry, trimmed(line.substr(0, equals), blanks),
                    trimmed(line.substr(equals + 1), blanks));
    }
    return entry;
}

AutostartFolders AutostartFolders::ofEnvironment() {
    AutostartFolders folders;
    if (const auto config = configHome())
        folders.user = fs::path(*config) / "autostart";
    for (const auto& folder : foldersIn("XDG_CONFIG_DIRS", "/etc/xdg"))
        if (folder.is_absolute())
            folders.system.push_back(folder / "autostart");
    return folders;
}

namespace {

/// Has the desktop start the program at log-in exactly once: where the user or a package already has an entry
/// that does, none is added.
class LinuxLoginItem final : public LoginItem {
  public:
    LinuxLoginItem(AutostartFolders folders, AutostartProgram program, std::function<Portal*()> portal,
                   std::function<void(const std::string& line)> fail)
        : folders_(std::move(folders)), program_(std::move(program)), portal_(std::move(portal)),
          fail_(std::move(fail)) {}

    void setEnabled(bool enabled) override {
        if (Portal* portal = portal_())
            return portal->requestBackground(enabled, program_.path,
                                             [this](const std::string&) { failed(); });
        try {
            enabled ? enable() : disable();
        } catch (const std::exception&) {
            failed();
        }
    }

  private:
    struct Found {
        fs::path path;
        DesktopEntry entry;
    };

    fs::path ownPath() const {
        if (folders_.user.empty())
            throw std::runtime_error("there is no folder for settings");
        return folders_.user / (program_.identifier + ".desktop");
    }

    bool startsUs(const Found& found) const {
        if (found.path.filename() == program_.identifier + ".desktop")
            return true;
        const auto program = programOnPath(found.entry.program);
        std::error_code none;
        return !program.empty() && fs::equivalent(program, program_.path, none);
    }

    std::vector<Found> entriesThatStartUs(const fs::path& folder) const {
        std::vector<Found> found;
        for (const auto& path : entriesOf(folder))
            if (const auto entry = entryAt(path); entry && startsUs({path, *entry}))
                found.push_back({path, *entry});
        return found;
    }

    std::vector<Found> systemEntries() const {
        std::vector<Found> all;
        for (const auto& folder : folders_.system)
            for (auto& found : entriesThatStartUs(folder))
                if (!found.entry.hidden)
                    all.push_back(std::move(found));
        return all;
    }

    /// What the user put there, under whatever name.
    std::vector<Found> userEntries() const {
        auto found = entriesThatStartUs(folders_.user);
        std::erase_if(found, [](const Found& one) { return one.entry.ours; });
        return found;
    }

    void write(const fs::path& path, const std::string& keys) const {
        makeFolderOf(path.string());
        replaceText(path, std::string(groupLine) + "\nType=Application\nName=" + entryValue(program_.name) +
                              "\n" + keys + std::string(ownEntryKey) + "=true\n");
    }

    /// Throws as `disable` does, `std::system_error` or `std::runtime_error`, with what stood there before
    /// still in place.
    void enable() const {
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
                setHidden(found.path, false);
            started = true;
        }
        if (started)
            return removeOwn(own);
        write(own, "Icon=" + entryValue(program_.identifier) + "\nExec=" +
                       entryValue(execArgument(program_.path)) + "\nTryExec=" + entryValue(program_.path) +
                       "\nTerminal=false\nStartupNotify=false\nX-GNOME-Autostart-enabled=true\n");
    }

    /// A package's entry is overridden, one that the user wrote is kept and hidden.
    void disable() const {
        removeOwn(ownPath());
        for (const auto& found : userEntries())
            if (!found.entry.hidden)
                setHidden(found.path, true);
        for (const auto& found : systemEntries()) {
            const auto overriding = folders_.user / found.path.filename();
            if (!fs::exists(overriding))
                write(overriding, "Hidden=true\n");
        }
    }

    /// The line is the same on every platform and names no reason.
    void failed() const { fail_("SMAppService error: "); }

    AutostartFolders folders_;
    AutostartProgram program_;
    std::function<Portal*()> portal_;
    std::function<void(const std::string& line)> fail_;
};

} // namespace

void writeToSystemLog(const std::string& line) {
    syslog(LOG_USER | LOG_ERR, "%s", line.c_str());
}

std::unique_ptr<LoginItem> makeLinuxLoginItem(AutostartFolders folders, AutostartProgram program,
                                              std::function<Portal*()> portal,
                                              std::function<void(const std::string& line)> fail) {
    return std::make_unique<LinuxLoginItem>(std::move(folders), std::move(program), std::move(portal),
                                            std::move(fail));
}

} // namespace kelpa
