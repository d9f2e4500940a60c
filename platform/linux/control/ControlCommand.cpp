#include "platform/linux/control/ControlCommand.h"

#include "platform/linux/control/ControlInterface.h"

#include <algorithm>
#include <iterator>
#include <optional>

namespace kelpa {

namespace {

constexpr std::string_view statusWord = "status";

// A command is declared here for both ends. packaging/CMakeLists.txt reads words and help for the
// completions.
constexpr ControlVerb verbs[] = {
    {"pause", "Pause", "stop the work period until somebody resumes it", &RemoteControl::pause},
    {"pause", "PauseFor", "stop it for so long, or 2h, or 1h30m", &RemoteControl::pauseFor, "", "45m"},
    {"pause", "PauseUntil", "stop it until then, or tomorrow", &RemoteControl::pauseUntil, "until", "14:30"},
    {"resume", "Resume", "begin a work period where there is none", &RemoteControl::resume},
    {"toggle", "Toggle", "the menu's line: stop, or begin", &RemoteControl::toggle},
    {"break", "StartBreak", "begin the break that comes next", &RemoteControl::startBreak},
    {"postpone", "Postpone", "put the next break off, by so many MINUTES", &RemoteControl::postpone},
    {"skip", "Skip", "end the break, where its screen offers that", &RemoteControl::skip},
    {"water", "ShowWater", "show the water panel", &RemoteControl::showWater},
    {"history", control::showHistory, "show what the days were like", &RemoteControl::showHistory},
    {"settings", control::showSettings, "show the preferences", &RemoteControl::showSettings},
    {"quit", "Quit", "end the program", &RemoteControl::quit},
};

template <typename Name>
const ControlVerb* find(Name ControlVerb::*name, std::string_view value) {
    const auto* const found = std::find_if(std::begin(verbs), std::end(verbs),
                                           [=](const ControlVerb& verb) { return verb.*name == value; });
    return found == std::end(verbs) ? nullptr : found;
}

std::string line(std::string_view word, std::string_view help) {
    constexpr std::size_t column = 12;
    std::string text = "  " + std::string(word);
    if (text.size() >= column)
        text += "\n";
    text.resize(text.size() >= column ? text.size() + column : column, ' ');
    return text + std::string(help) + "\n";
}

/// How a verb is written on the command line.
std::string usage(const ControlVerb& verb) {
    std::string text(verb.word);
    for (const std::string_view part : {verb.preposition, verb.example})
        if (!part.empty())
            text += " " + std::string(part);
    return text;
}

std::optional<std::string> joined(std::span<const std::string> words) {
    std::string text;
    for (const std::string& word : words) {
        if (word.starts_with("-"))
            return std::nullopt;
        text += (text.empty() ? "" : " ") + word;
    }
    return text;
}

/// What a verb takes of what stands behind its word; nothing where that is not of its form.
std::optional<std::string> textFor(const ControlVerb& verb, std::span<const std::string> behind) {
    if (!verb.obey.takesText())
        return behind.empty() ? std::optional<std::string>("") : std::nullopt;
    if (verb.example.empty())
        return joined(behind);
    const std::size_t place = verb.preposition.empty() ? 0 : 1;
    if (behind.size() != place + 1 || (place > 0 && behind[0] != verb.preposition))
        return std::nullopt;
    const std::string& text = behind[place];
    return text.empty() || text.starts_with("-") ? std::nullopt : std::optional(text);
}

/// The verb of this word whose form is that of what stands behind it.
ParsedControl parseVerb(const std::string& word, std::span<const std::string> behind) {
    for (const ControlVerb& verb : verbs)
        if (verb.word == word)
            if (auto text = textFor(verb, behind))
                return {{&verb, *text}, {}};
    if (behind.empty())
        return {{}, word + " needs more"};
    return {{}, word + " does not know '" + behind.back() + "'"};
}

ParsedControl parseStatus(std::span<const std::string> options) {
    ParsedControl parsed;
    for (const std::string& option : options)
        if (option == "--json")
            parsed.command.json = true;
        else if (option == "--follow")
            parsed.command.follow = true;
        else
            return {{}, std::string(statusWord) + " does not know '" + option + "'"};
    return parsed;
}

/// Most of it needs no program that runs.
std::string historyHelp() {
    return line(historyWord, "tell work, breaks and water of the last 14 days, whether Kelpa runs or not;") +
           line("", "--days N for others, or --from DATE --to DATE (as 2026-11-23), --json or") +
           line("", "--csv for programs to read, --show for a window of the Kelpa that runs");
}

} // namespace

std::span<const ControlVerb> controlVerbs() {
    return verbs;
}

const ControlVerb* verbOfMethod(std::string_view method) {
    return find(&ControlVerb::method, method);
}

bool isControlWord(const std::string& word) {
    return word == statusWord || find(&ControlVerb::word, word) != nullptr;
}

ParsedControl parseControl(std::span<const std::string> arguments) {
    const auto behind = arguments.subspan(1);
    return arguments.front() == statusWord ? parseStatus(behind) : parseVerb(arguments.front(), behind);
}

std::string controlHelp() {
    std::string text =
        line(statusWord, "tell state, time and water in one line; --json for programs to read,") +
        line("", "--follow for a line at each change, at most one a second");
    for (const ControlVerb& verb : verbs)
        text += verb.word == historyWord ? historyHelp() : line(usage(verb), verb.help);
    return text;
}

} // namespace kelpa
