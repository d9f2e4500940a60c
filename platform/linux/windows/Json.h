#pragma once

#include "platform/ports/Services.h"
#include "platform/ports/WindowFaces.h"

#include <string>
#include <utility>
#include <vector>

namespace kelpa {

// What has parts, as one line of JSON, which the view reads. Bytes that are no UTF-8 become U+FFFD.

/// What a window consists of or shows: `PreferencesLayout`, `AboutContent`, the texts of a break, of the
/// water panel and of the history, `WaterProgress`, `HistoryPicture`. Parts are called as the members are;
/// what is put in another form for the view, as the range of a picture is, has a name of its own.
template <class Parts>
[[nodiscard]] std::string partsJson(const Parts& parts);
/// What can be chosen: a value, and the text that offers it.
[[nodiscard]] std::string choicesJson(const std::vector<std::pair<std::string, std::string>>& choices);
/// As many of the entries from the top, each text of at most `wire::view::longestText`, as one message can
/// carry, and of times no more than anybody can want to see.
[[nodiscard]] std::string entriesJson(const std::vector<PreferencesEntry>& entries);

} // namespace kelpa
