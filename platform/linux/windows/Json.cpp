#include "platform/linux/windows/Json.h"

#include "base/Text.h"
#include "platform/linux/helper/ViewProtocol.h"

#include <nlohmann/json.hpp>

namespace kelpa {

using nlohmann::json;

/// The names in JSON are those of the members.
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(SymbolButton, symbol, name)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(AboutContent, icon, glyph, glyphFont, name, version, copyright, link,
                                   linkAddress)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(PreferencesEntry, value, text, removal)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(HistoryTexts, title, days, weeks, forget, question, confirm, cancel)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(HistoryBar, parts, goal, texts)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(HistoryChart, name, scale, bars)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(HistoryPeriod, first, last)

namespace {

/// Bytes of a list, each of which may double when the message is made, of which the longest holds 512 KiB.
constexpr std::size_t mostBytes = 240000;
/// One every five minutes of a day; some thousands would keep the view busy for seconds.
constexpr std::size_t mostTimePoints = 288;

/// What is no UTF-8 becomes U+FFFD: a reader would refuse the whole for it.
std::string textOf(const json& value) {
    return value.dump(-1, ' ', false, json::error_handler_t::replace);
}

json rowJson(const PreferencesRow& row) {
    return {{"caption", row.caption},
            {"id", row.control.id},
            {"kind", nameOf(preferencesControlKinds, row.control.kind)},
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

std::string historyJson(const HistoryTexts& texts) {
    return textOf(texts);
}

std::string historyJson(const HistoryPicture& picture) {
    return textOf({{"weeks", picture.range == HistoryRange::Weeks},
                   {"periods", picture.periods},
                   {"charts", picture.charts},
                   {"note", picture.note}});
}

std::string choicesJson(const std::vector<std::pair<std::string, std::string>>& choices) {
    json all = json::array();
    for (const auto& [value, text] : choices)
        all.push_back({{"value", value}, {"text", text}});
    return textOf(all);
}

std::string entriesJson(const std::vector<PreferencesEntry>& entries) {
    json all = json::array();
    std::size_t bytes = 0;
    for (const PreferencesEntry& entry : entries) {
        json one = entry;
        bytes += textOf(one).size() + 1;
        if (bytes > mostBytes || (!entry.removal.empty() && all.size() == mostTimePoints))
            break;
        all.push_back(std::move(one));
    }
    return textOf(all);
}

} // namespace kelpa
