#pragma once

#include "platform/linux/control/ControlCommand.h"
#include "platform/linux/control/HistoryCommand.h"
#include "platform/linux/instance/InstanceLock.h"

#include <string>
#include <vector>

namespace kelpa {

/// What the command line asks for.
struct Options {
    enum class Action { Run, Control, History, ShowHelp, ShowVersion };
    Action action = Action::Run;
    double speed = 1; ///< how many seconds pass in one
    StartWish wish = StartWish::Preferences;
    ControlCommand control; ///< what to ask of the running program
    HistoryCommand history; ///< what to tell of past days
};

struct ParsedOptions {
    Options options;
    std::string error; ///< one line without a line feed; empty when all is well
};

/// Reads the arguments behind the program's name. The first one that asks for help or the version decides.
[[nodiscard]] ParsedOptions parseOptions(const std::vector<std::string>& arguments);
[[nodiscard]] std::string helpText();
[[nodiscard]] std::string versionText();

} // namespace kelpa
