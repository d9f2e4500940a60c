#pragma once

#include <optional>
#include <string>

namespace kelpa {

/// Opens on /dev/null what is closed of standard input, output and error: another file would get the number,
/// and everything that is printed. To be called before anything else opens a file.
void openStandardStreams();

/// Why the program cannot open as many files as it and its windows need, as a sentence without its full stop;
/// nothing when it can.
[[nodiscard]] std::optional<std::string> tooFewDescriptors();

} // namespace kelpa
