#pragma once

#include "app/RemoteControl.h"

#include <span>
#include <string>
#include <string_view>

namespace kelpa {

/// What the remote control does for a command: something that takes no argument, or a text, which is empty
/// where none was given.
class ControlDeed {
  public:
    using Refusal = RemoteControl::Refusal;
    constexpr ControlDeed(Refusal (RemoteControl::*plain)()) : plain_(plain) {}
    constexpr ControlDeed(Refusal (RemoteControl::*withText)(const std::string&)) : withText_(withText) {}

    [[nodiscard]] constexpr bool takesText() const { return withText_ != nullptr; }
    Refusal operator()(RemoteControl& remote, const std::string& text) const {
        return takesText() ? (remote.*withText_)(text) : (remote.*plain_)();
    }

  private:
    Refusal (RemoteControl::*plain_)() = nullptr;
    Refusal (RemoteControl::*withText_)(const std::string&) = nullptr;
};

/// Something that the running program can be asked for, by the command line and by its object on the bus.
struct ControlVerb {
    std::string_view word; ///< on the command line
    const char* method;    ///< on the bus
    std::string_view help;
    ControlDeed obey;
    std::string_view preposition = {}; ///< between the word and a text; empty for none
    std::string_view example = {};     ///< of a text that it needs; empty where it does without
};

/// All of them, in the order of the help.
[[nodiscard]] std::span<const ControlVerb> controlVerbs();
/// The one with this method; null where there is none.
[[nodiscard]] const ControlVerb* verbOfMethod(std::string_view method);

/// What the command line asks of the running program.
struct ControlCommand {
    const ControlVerb* verb = nullptr; ///< null for its status
    std::string text;                  ///< what follows the word, where the verb takes that
    bool json = false;
    bool follow = false;
};

/// The command whose options are the history's.
inline constexpr std::string_view historyWord = "history";

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
