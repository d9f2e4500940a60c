#pragma once

#include <span>
#include <string>
#include <string_view>

namespace kelpa {

/// A word of the command line that asks something of the running program.
struct ControlVerb {
    std::string_view word;
    const char* method; ///< on the bus
    std::string_view help;
};

/// What the command line asks of the running program.
struct ControlCommand {
    const ControlVerb* verb = nullptr; ///< null for its status
    bool json = false;
    bool follow = false;
};

/// Whether a command begins with this word.
[[nodiscard]] bool isControlWord(const std::string& word);

struct ParsedControl {
    ControlCommand command;
    std::string error; ///< empty when all is well
};
/// Reads a command, whose first argument is a control word.
[[nodiscard]] ParsedControl parseControl(std::span<const std::string> arguments);

/// The part of the help that tells of the commands.
[[nodiscard]] std::string controlHelp();

} // namespace kelpa
