#pragma once

#include "platform/linux/services/Launcher.h"

#include <functional>
#include <string>
#include <vector>

namespace kelpa {

/// What a program prints beyond this is not read; it is killed, and counts as having printed nothing.
inline constexpr std::size_t mostOutput = 1 << 20;

/// Reads what a program prints, in English, and does not wait for it: starts the one of that name and calls
/// `ended` once, from the main loop, with all that it printed until it closed its standard output; nothing
/// where it could not be started. The handle, which may end inside of `ended`, kills it. Loop and launcher
/// outlive the program.
[[nodiscard]] Subscription readOutput(EventLoop& loop, Launcher& launcher, std::vector<std::string> command,
                                      std::function<void(const std::string& text)> ended);

} // namespace kelpa
