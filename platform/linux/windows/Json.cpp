#include "platform/linux/windows/Json.h"

#include "platform/linux/helper/ViewProtocol.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace kelpa {

using nlohmann::json;

/// The names in JSON are those of the members.
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(SymbolButton, symbol, name)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(AboutContent, icon, glyph, glyphFont, name, version, copyright, link,
                                   linkAddress)

namespace {

/// Bytes of a list, each of which may double when the message is made, of which the longest holds 512 KiB.
constexpr std::size_t mostBytes = 240000;
/// One every five minutes of a day; some thousands would keep the view busy for seconds.
constexpr std::size_t mostTimePoints = 288;

/// What is no UTF-8 becomes U+FFFD: a reader would refuse the whole for it.
std::string textOf(const json& value) {
    return value.dump(-1, ' ', false, json::error_handler_t::replace);
}

std::string_view kindName(PreferencesControlKind kind) {
    switch (kind) {
    case PreferencesControlKind::Switch:
        return "switch";
    case PreferencesControlKind::Number:
        return "number";
    case PreferencesControlKind::Accumulator:
        return "accumulator";
    case PreferencesControlKind::Text:
        return "text";
    case PreferencesControlKind::Picker:
        return "picker";
    case PreferencesControlKind::Segments:
        return "segments";
    case PreferencesControlKind::TimeOfDay:
        return "timeOfDay";
    case PreferencesControlKind::Tiles:
        return "tiles";
    case PreferencesControlKind::TimePoints:
        return "timePoints";
    case PreferencesControlKind::Prompts:
        return "prompts";
    }
    return "";
}

json rowJson(const PreferencesRow& row) {
    return {{"caption", row.caption},
            {"id", row.control.id},
            {"kind", kindName(row.control.kind)},
            {"label", row.control.label},
            {"unit", row.control.unit}};
}

json sectionJson(const PreferencesSection& section) {
    json rows = json::array();
    for (const PreferencesRow& row : section.rows)
        rows.push_back(rowJson(row));
    return {{"title", section.title}, {"rows", std::move(rows)}};
}

json paneJson(const PreferencesPane& pane) {
    json sections = json::array();
    for (const PreferencesSection& section : pane.sections)
        sections.push_back(sectionJson(section));
    json all = {{"label", pane.label}, {"symbol", pane.symbol}, {"sections", std::move(sections)}};
    if (pane.about)
        all["about"] = *pane.about;
    return all;
}

json buttonsJson(const PreferencesLayout& layout) {
    return {{"addPrompt", layout.prompts.add},
            {"editPrompt", layout.prompts.edit},
            {"cancelPrompt", layout.prompts.cancel},
            {"removePrompt", layout.prompts.remove},
            {"resetPrompts", layout.prompts.reset},
            {"addTimePoint", layout.addTimePoint},
            {"removalSymbol", layout.removalSymbol},
            {"decrease", layout.decrease},
            {"increase", layout.increase}};
}

} // namespace

std::string layoutJson(const PreferencesLayout& layout) {
    json panes = json::array();
    for (const PreferencesPane& pane : layout.panes)
        panes.push_back(paneJson(pane));
    return textOf({{"minimumWidth", layout.minimumWidth},
                   {"minimumHeight", layout.minimumHeight},
                   {"buttons", buttonsJson(layout)},
                   {"panes", std::move(panes)}});
}

std::string aboutJson(const AboutContent& about) {
    return textOf(about);
}

std::string choicesJson(const std::vector<PreferencesChoice>& choices) {
    json all = json::array();
    for (const auto& [value, text] : choices)
        all.push_back({{"value", std::to_string(value)}, {"text", text}});
    return textOf(all);
}

std::string timePointsJson(const std::vector<TimePoint>& points) {
    json all = json::array();
    for (std::size_t i = 0; i < std::min(points.size(), mostTimePoints); ++i) {
        const auto& [hour, minute, text, removal] = points[i];
        const std::string value = std::to_string(hour) + ":" + std::to_string(minute);
        all.push_back({{"value", value}, {"text", text}, {"removal", removal}});
    }
    return textOf(all);
}

std::string promptsJson(const std::vector<std::string>& prompts) {
    json all = json::array();
    std::size_t bytes = 0;
    for (const std::string& prompt : prompts) {
        json line = {{"text", prompt}};
        bytes += textOf(line).size() + 1;
        if (bytes > mostBytes)
            break;
        all.push_back(std::move(line));
    }
    return textOf(all);
}

} // namespace kelpa
