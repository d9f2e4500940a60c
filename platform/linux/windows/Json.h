#pragma once

#include "platform/ports/Services.h"

#include <string>
#include <vector>

namespace kelpa {

/// What has parts, as one line of JSON, which the view reads. Bytes that are no UTF-8 become U+FFFD.

/// What the preferences window and the about panel consist of.
[[nodiscard]] std::string layoutJson(const PreferencesLayout& layout);
[[nodiscard]] std::string aboutJson(const AboutContent& about);
[[nodiscard]] std::string choicesJson(const std::vector<PreferencesChoice>& choices);
/// The first of them, where there are more than anybody can want to see.
[[nodiscard]] std::string timePointsJson(const std::vector<TimePoint>& points);
/// As many of the prompts, of at most `wire::view::longestText` each, from the top, as one message can carry.
[[nodiscard]] std::string promptsJson(const std::vector<std::string>& prompts);

} // namespace kelpa
