#include "platform/linux/control/ControlCommand.h"

#include "platform/linux/control/ControlInterface.h"

#include <algorithm>
#include <iterator>

namespace kelpa {

namespace {

constexpr std::string_view statusWord = "status";

// A command is declared here for both ends. packaging/CMakeLists.txt reads words and help for the
// completions.
constexpr ControlVerb verbs[] = {
    {"pause", "Pause", "stop the work period until somebody resumes it", &RemoteControl::pause},
    {"resume", "Resume", "begin a work period where there is none", &RemoteControl::resume},
    {"toggle", "Toggle", "the menu's line: stop, or begin", &RemoteControl::toggle},
    {"break", "StartBreak", "begin the break that comes next", &RemoteControl::startBreak},
    {"postpone", "Postpone", "put the next break off, by so many MINUTES", &RemoteControl::postpone},
    {"skip", "Skip", "end the break, where its screen offers that", &RemoteControl::skip},
    {"water", "ShowWater", "show the water panel", &RemoteControl::showWater},
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
    text.resize(std::max(column, text.size() + 1), ' ');
    return text + std::string(help) + "\n";
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
    ParsedControl parsed;
    parsed.command.verb = find(&ControlVerb::word, arguments.front());
    const bool ofStatus = parsed.command.verb == nullptr;
    const bool takesText = !ofStatus && parsed.command.verb->obey.takesText();
    for (const std::string& argument : arguments.subspan(1)) {
        if (ofStatus && argument == "--json")
            parsed.command.json = true;
        else if (ofStatus && argument == "--follow")
            parsed.command.follow = true;
        else if (takesText && !argument.starts_with("-"))
            parsed.command.text += (parsed.command.text.empty() ? "" : " ") + argument;
        else
            return {{}, arguments.front() + " does not know '" + argument + "'"};
    }
    return parsed;
}

std::string controlHelp() {
    std::string text =
        line(statusWord, "tell state, time and water in one line; --json for programs to read,") +
        line("", "--follow for a line at each change, at most one a second");
    for (const ControlVerb& verb : verbs)
        text += line(verb.word, verb.help);
    return text;
}

} // namespace kelpa
