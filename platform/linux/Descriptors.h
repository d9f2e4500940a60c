#pragma once

#include <optional>
#include <string>

namespace kelpa {

/// Opens on /dev/null what is closed of standard input, output and error: another file would get the number,
/// and everything that is printed. To be called before anything else opens a file.
void openStandardStreams();

/// Has what is printed into a pipe or onto a terminal dropped while nobody takes it, for a reader who stands
/// still must not hold the program up. Other programs that print there are not touched.
void printWithoutWaiting();

/// Why the program cannot open as many files as it and its windows need, as a sentence without its full stop;
/// nothing when it can.
[[nodiscard]] std::optional<std::string> tooFewDescriptors();

} // namespace kelpa
