#include "platform/linux/services/DesktopEntry.h"

namespace kelpa {

namespace {

constexpr std::string_view reserved = " \t\n\"'\\><~|&;$*?#()`";
constexpr std::string_view escapedInQuotes = "\"`$\\";

std::string_view trimmed(std::string_view text) {
    const auto first = text.find_first_not_of(" \t\r");
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(" \t\r") - first + 1);
}

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
    std::string written;
    for (const char character : text) {
        switch (character) {
        case '\\':
            written += "\\\\";
            break;
        case '\n':
            written += "\\n";
            break;
        case '\t':
            written += "\\t";
            break;
        case '\r':
            written += "\\r";
            break;
        default:
            written += character;
        }
    }
    return written;
}

std::optional<DesktopEntry> readDesktopEntry(std::string_view text) {
    std::optional<DesktopEntry> entry;
    bool inGroup = false;
    while (!text.empty()) {
        const auto end = text.find('\n');
        const auto line = trimmed(text.substr(0, end));
        text = end == std::string_view::npos ? std::string_view() : text.substr(end + 1);
        if (line.starts_with('[')) {
            inGroup = line == "[Desktop Entry]";
            if (inGroup && !entry)
                entry.emplace();
            continue;
        }
        const auto equals = line.find('=');
        if (inGroup && !line.starts_with('#') && equals != std::string_view::npos)
            readKey(*entry, trimmed(line.substr(0, equals)), trimmed(line.substr(equals + 1)));
    }
    return entry;
}

} // namespace kelpa
