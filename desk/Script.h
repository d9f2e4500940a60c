#pragma once

#include "desk/Desk.h"

#include <functional>
#include <istream>
#include <stdexcept>
#include <string>
#include <vector>

namespace kelpa::desk {

/// What is wrong with a script, with the number of the line.
struct ScriptError : std::runtime_error {
    using std::runtime_error::runtime_error;
};

struct Command {
    int line = 0;
    std::function<void(Desk&)> run;
};

/// Reads a whole script before anything of it is played. Throws `ScriptError`.
[[nodiscard]] std::vector<Command> readScript(std::istream& in);

/// Plays commands until the last one, or until the program quits. Throws `ScriptError` for a command that the
/// desk is not ready for, and `FatalEnd` where the program ends itself.
void play(Desk& desk, const std::vector<Command>& script);

} // namespace kelpa::desk
