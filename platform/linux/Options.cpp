#include "platform/linux/Options.h"

#include "base/Text.h"
#include "platform/linux/BuildConfig.h"

#include <cmath>

namespace kelpa {

namespace {

constexpr double highestSpeed = 1000;

std::optional<double> speedOf(const std::string& text) {
    const auto speed = parseDecimal(text);
    if (!speed || !std::isfinite(*speed) || *speed <= 0 || *speed > highestSpeed)
        return std::nullopt;
    return speed;
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

} // namespace

ParsedOptions parseOptions(const std::vector<std::string>& arguments) {
    constexpr std::string_view withValue = "--speed=";
    Options options;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (argument == "--help" || argument == "-h")
            return asked(Options::Action::ShowHelp);
        if (argument == "--version")
            return asked(Options::Action::ShowVersion);
        const bool joined = argument.starts_with(withValue);
        if (!joined && argument != "--speed")
            return refused("unknown option '" + argument + "'");
        if (!joined && i + 1 == arguments.size())
            return refused("--speed needs a number");
        const std::string value = joined ? argument.substr(withValue.size()) : arguments[++i];
        const auto speed = speedOf(value);
        if (!speed)
            return refused("--speed needs a number above 0 and up to 1000, not '" + value + "'");
        options.speed = *speed;
    }
    return {options, {}};
}

std::string helpText() {
    return "Usage: kelpa [--speed N]\n"
           "Reminds of breaks; lives in the desktop's tray.\n"
           "\n"
           "  --speed N   let N seconds pass in one, above 0 and up to 1000, for demonstrations\n"
           "  --help      show this help and end\n"
           "  --version   show the version and end\n";
}

std::string versionText() {
    return std::string(build::displayName) + " " + build::version + " (" + build::number + ")\n";
}

} // namespace kelpa
