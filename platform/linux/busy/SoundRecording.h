#pragma once

#include <set>
#include <string>

namespace kelpa {

/// The numbers of the sources from which programs record at this moment, by what `pactl list source-outputs`
/// prints in English: neither streams that are held still, nor those of the sound server's own modules, nor
/// level meters. Whatever else is in the text is passed over.
[[nodiscard]] std::set<std::string> recordedSources(const std::string& streams);
/// The numbers of the sources that are no monitors of what is played, by `pactl list sources`.
[[nodiscard]] std::set<std::string> realSources(const std::string& sources);

} // namespace kelpa
