#pragma once

#include "platform/ports/Services.h"

#include <string>
#include <utility>
#include <vector>

namespace kelpa {

/// What has parts, as one line of JSON, which the view reads. Bytes that are no UTF-8 become U+FFFD.

/// What the preferences window and the about panel consist of.
[[nodiscard]] std::string layoutJson(const PreferencesLayout& layout);
[[nodiscard]] std::string aboutJson(const AboutContent& about);
/// The texts and the figures of the history's window.
[[nodiscard]] std::string historyJson(const HistoryTexts& texts);
[[nodiscard]] std::string historyJson(const HistoryPicture& picture);
/// What can be chosen: a value, and the text that offers it.
[[nodiscard]] std::string choicesJson(const std::vector<std::pair<std::string, std::string>>& choices);
/// As many of the entries from the top, each text of at most `wire::view::longestText`, as one message can
/// carry, and of times no more than anybody can want to see.
[[nodiscard]] std::string entriesJson(const std::vector<PreferencesEntry>& entries);

} // namespace kelpa
