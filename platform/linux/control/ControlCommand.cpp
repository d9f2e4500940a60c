#include "platform/linux/control/ControlCommand.h"

#include "platform/linux/control/ControlInterface.h"

#include <algorithm>
#include <iterator>

namespace kelpa {

namespace {

constexpr std::string_view statusWord = "status";

constexpr ControlVerb verbs[] = {
    {"pause", control::pause, "stop the work period until somebody resumes it"},
    {"resume", control::resume, "begin a work period where there is none"},
    {"toggle", control::toggle, "the menu's line: stop, or begin"},
    {"skip", control::skip, "end the break, where its screen offers that"},
    {"water", control::showWater, "show the water panel"},
    {"settings", control::showSettings, "show the preferences"},
    {"quit", control::quit, "end the program"},
};

const ControlVerb* findVerb(std::string_view word) {
    const auto* const found = std::find_if(std::begin(verbs), std::end(verbs),
                                           [word](const ControlVerb& verb) { return verb.word == word; });
    return found == std::end(verbs) ? nullptr : found;
}

std::string line(std::string_view word, std::string_view help) {
    constexpr std::size_t column = 12;
    std::string text = "  " + std::string(word);
    text.resize(std::max(column, text.size() + 1), ' ');
    return text + std::string(help) + "\n";
}

} // namespace

bool isControlWord(const std::string& word) {
    return word == statusWord || findVerb(word) != nullptr;
}

ParsedControl parseControl(std::span<const std::string> arguments) {
    ParsedControl parsed;
    parsed.command.verb = findVerb(arguments.front());
    for (const std::string& argument : arguments.subspan(1)) {
        const bool ofStatus = parsed.command.verb == nullptr;
        if (ofStatus && argument == "--json")
            parsed.command.json = true;
        else if (ofStatus && argument == "--follow")
            parsed.command.follow = true;
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
