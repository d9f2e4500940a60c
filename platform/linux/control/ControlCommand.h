#pragma once

#include "app/RemoteControl.h"

#include <span>
#include <string>
#include <string_view>

namespace kelpa {

/// Something that the running program can be asked for, by the command line and by its object on the bus.
struct ControlVerb {
    std::string_view word; ///< on the command line
    const char* method;    ///< on the bus
    std::string_view help;
    RemoteControl::Refusal (RemoteControl::*obey)();
};

/// All of them, in the order of the help.
[[nodiscard]] std::span<const ControlVerb> controlVerbs();
/// The one with this method; null where there is none.
[[nodiscard]] const ControlVerb* verbOfMethod(std::string_view method);

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
