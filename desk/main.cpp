#include "base/Text.h"
#include "desk/Script.h"
#include "desk/Values.h"

#include <cstdio>
#include <fstream>
#include <iostream>

namespace {

using namespace kelpa::desk;

constexpr const char* usage = "usage: kelpa-desk [--quiet KIND,KIND...] [--seed N] SCRIPT|-\n";

struct Options {
    std::vector<std::string> quiet;
    std::uint64_t seed = 1;
    std::string script;
};

[[nodiscard]] int refuse(const std::string& message) {
    std::fprintf(stderr, "kelpa-desk: %s\n", message.c_str());
    return 2;
}

/// Reads one option and its value; what is wrong with them, or nothing.
std::string readOption(const std::string& name, const std::string& value, Options& options) {
    if (name == "--quiet") {
        options.quiet = words(kelpa::replacingAll(value, ",", " "));
        return {};
    }
    const auto seed = kelpa::wholeNumber<std::int64_t>(value);
    if (!seed || *seed < 0)
        return "'" + value + "' is no seed";
    options.seed = static_cast<std::uint64_t>(*seed);
    return {};
}

std::string readArguments(const std::vector<std::string>& arguments, Options& options) {
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        const std::string& argument = arguments[i];
        if (argument == "--quiet" || argument == "--seed") {
            if (i + 1 == arguments.size())
                return argument + " needs a value";
            if (auto problem = readOption(argument, arguments[++i], options); !problem.empty())
                return problem;
        } else if (argument.size() > 1 && argument.front() == '-') {
            return "unknown option '" + argument + "'";
        } else if (!options.script.empty()) {
            return "more than one script";
        } else {
            options.script = argument;
        }
    }
    return options.script.empty() ? "no script; it is a file, or - for standard input" : "";
}

std::vector<Command> readFrom(const std::string& name) {
    if (name == "-")
        return readScript(std::cin);
    std::ifstream file(name);
    if (!file)
        throw ScriptError(name + " cannot be read");
    return readScript(file);
}

} // namespace

int main(int argc, char** argv) {
    Options options;
    const std::vector<std::string> arguments(argv + 1, argv + argc);
    if (arguments == std::vector<std::string>{"--help"})
        return std::fputs(usage, stdout) < 0 ? 1 : 0;
    if (const auto problem = readArguments(arguments, options); !problem.empty())
        return refuse(problem);
    try {
        const auto script = readFrom(options.script);
        VirtualTime time;
        PrintedJournal journal(time);
        for (const std::string& kind : options.quiet)
            journal.quiet(kind);
        Desk desk(time, journal, options.seed);
        play(desk, script);
    } catch (const ScriptError& error) {
        std::fflush(stdout);
        return refuse(error.what());
    } catch (const FatalEnd&) {
        return 3;
    }
    return 0;
}
