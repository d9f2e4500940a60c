#include "platform/linux/Options.h"

#include "platform/linux/BuildConfig.h"
#include "platform/posix/SystemClock.h"

#include <algorithm>

namespace kelpa {

namespace {

std::string speedRange() {
    return "above 0 and up to " + std::to_string(highestSpeed);
}

/// Control characters of a foreign argument would garble the terminal and break the one line.
std::string printable(std::string text) {
    for (char& c : text)
        if (static_cast<unsigned char>(c) < 0x20 || c == 0x7f)
            c = '?';
    return text;
}

ParsedOptions refused(const std::string& why) {
    return {{}, "kelpa: " + printable(why) + " (try --help)"};
}

ParsedOptions asked(Options::Action action) {
    Options options;
    options.action = action;
    return {options, {}};
}

bool asksForHelp(const std::string& argument) {
    return argument == "--help" || argument == "-h";
}

ParsedOptions parseCommand(const std::vector<std::string>& arguments) {
    auto [command, error] = parseControl(arguments);
    if (!error.empty())
        return refused(error);
    ParsedOptions parsed = asked(Options::Action::Control);
    parsed.options.control = command;
    return parsed;
}

ParsedOptions parseHistoryCommand(const std::vector<std::string>& arguments) {
    const auto [command, error] = parseHistory(arguments);
    if (!error.empty())
        return refused(error);
    if (command.show)
        return parseCommand({arguments.front()});
    ParsedOptions parsed = asked(Options::Action::History);
    parsed.options.history = command;
    return parsed;
}

/// What is no option is most likely meant as a command.
ParsedOptions unknown(const std::string& argument) {
    return refused((argument.starts_with("-") ? "unknown option '" : "unknown command '") + argument + "'");
}

} // namespace

ParsedOptions parseOptions(const std::vector<std::string>& arguments) {
    const bool command = !arguments.empty() && isControlWord(arguments.front());
    if (command && std::any_of(arguments.begin(), arguments.end(), asksForHelp))
        return asked(Options::Action::ShowHelp);
    if (command)
        return arguments.front() == historyWord ? parseHistoryCommand(arguments) : parseCommand(arguments);
    constexpr std::string_view withValue = "--speed=";
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (asksForHelp(argument))
            return asked(Options::Action::ShowHelp);
        if (argument == "--version")
            return asked(Options::Action::ShowVersion);
        if (argument == "--show-history") {
            options.wish = StartWish::History;
            continue;
        }
        const bool joined = argument.starts_with(withValue);
        if (!joined && argument != "--speed")
            return unknown(argument);
        if (!joined && i + 1 == arguments.size())
            return refused("--speed needs a number");
        const std::string value = joined ? argument.substr(withValue.size()) : arguments[++i];
        const auto speed = speedOf(value);
        if (!speed)
            return refused("--speed needs a number " + speedRange() + ", not '" + value + "'");
        options.speed = *speed;
    }
    return {options, {}};
}

std::string helpText() {
    return "Usage: kelpa [--show-history] [--speed N]\n"
           "       kelpa COMMAND\n"
           "Reminds of breaks; lives in the desktop's tray. Where it runs already, it shows its "
           "preferences.\n"
           "\n"
           "  --show-history\n"
           "              show the history; where Kelpa runs already, in place of its preferences\n"
           "  --speed N   let N seconds pass in one, " +
           speedRange() +
           ", for demonstrations\n"
           "  --help      show this help and end\n"
           "  --version   show the version and end\n"
           "\n"
           "Commands for the Kelpa that runs:\n" +
           controlHelp() +
           "A command ends with 0, with 1 when it is refused and with 3 when Kelpa is not running.\n";
}

std::string versionText() {
    return std::string(build::displayName) + " " + build::version + " (" + build::number + ")\n";
}

} // namespace kelpa
