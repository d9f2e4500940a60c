#pragma once

namespace kelpa {

/// A server that sends headers without end would otherwise fill the machine's memory, because the toolkit
/// keeps them all. From here on the process may take some more memory and not beyond: then it says so on
/// `channel`, in the protocol's words, and ends.
void boundMemory(int channel);

} // namespace kelpa
