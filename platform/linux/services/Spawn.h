#pragma once

#include <string>
#include <vector>

namespace kelpa {

/// Starts the program that the PATH has under the command's first word, with the signals of a fresh program.
/// Gives its process id, or 0 when it cannot be started. With an `output` it prints there, in English, reads
/// nothing and complains to nobody; the caller keeps owning that descriptor.
[[nodiscard]] int spawn(std::vector<std::string>& command, int output = -1);

} // namespace kelpa
