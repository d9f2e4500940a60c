#pragma once

#include <string>

namespace kelpa {

/// Starts the program `path` as a child that finds `descriptor` as its descriptor 3. It is killed when the
/// thread that called this ends, however that comes about: call it from the main thread. Throws what the
/// system refused.
[[nodiscard]] int startHelper(const std::string& path, int descriptor);

/// Waits a moment for a child that has been asked to end, kills it if it does not, and reaps it. Whoever
/// watches the child has stopped doing so.
void endHelper(int pid);

} // namespace kelpa
