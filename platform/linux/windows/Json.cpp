#include "platform/linux/windows/Json.h"

#include "base/Text.h"
#include "platform/linux/helper/ViewProtocol.h"

#include <nlohmann/json.hpp>

namespace kelpa {

using nlohmann::json;

/// The names in JSON are those of the members.
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(BreakScreenTexts, newFeature, waterReminder, hint, skip, linkSymbol)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(WaterPanelTexts, finished, percent, remain, wellDone, skip, done, close,
                                   cup)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(WaterProgress, finished, percent, remain, fraction)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(SymbolButton, symbol, name)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(PromptListButtons, add, edit, cancel, remove, reset)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(AboutContent, icon, glyph, glyphFont, name, version, copyright, link,
                                   linkAddress)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(PreferencesEntry, value, text, removal)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(HistoryTexts, title, days, weeks, forget, question, confirm, cancel)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(HistoryBar, parts, goal, texts)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(HistoryChart, name, scale, bars)
NLOHMANN_DEFINE_TYPE_NON_INTRUSIVE(HistoryPeriod, first, last)

static void to_json(json& out, const PreferencesRow& row) {
    out = {{"caption", row.caption},
           {"id", row.control.id},
           {"kind", nameOf(preferencesControlKinds, row.control.kind)},
           {"label", row.control.label},
           {"unit", row.control.unit}};
}

static void to_json(json& out, const PreferencesSection& section) {
    out = {{"title", section.title}, {"rows", section.rows}};
}

static void to_json(json& out, const PreferencesPane& pane) {
    out = {{"label", pane.label}, {"symbol", pane.symbol}, {"sections", pane.sections}};
    if (pane.about)
        out["about"] = *pane.about;
}

static void to_json(json& out, const PreferencesLayout& layout) {
    out = {{"minimumWidth", layout.minimumWidth},
           {"minimumHeight", layout.minimumHeight},
           {"panes", layout.panes},
           {"buttons",
            {{"prompts", layout.prompts},
             {"addTimePoint", layout.addTimePoint},
             {"removalSymbol", layout.removalSymbol},
             {"decrease", layout.decrease},
             {"increase", layout.increase}}}};
}

static void to_json(json& out, const HistoryPicture& picture) {
    out = {{"weeks", picture.range == HistoryRange::Weeks},
           {"periods", picture.periods},
           {"charts", picture.charts},
           {"note", picture.note}};
}

namespace {

/// Bytes of a list, each of which may double when the message is made, of which the longest holds 512 KiB.
constexpr std::size_t mostBytes = 240000;
/// One every five minutes of a day; some thousands would keep the view busy for seconds.
constexpr std::size_t mostTimePoints = 288;

/// What is no UTF-8 becomes U+FFFD: a reader would refuse the whole for it.
std::string textOf(const json& value) {
    return value.dump(-1, ' ', false, json::error_handler_t::replace);
}

} // namespace

template <class Parts>
std::string partsJson(const Parts& parts) {
    return textOf(parts);
}

template std::string partsJson(const AboutContent&);
template std::string partsJson(const BreakScreenTexts&);
template std::string partsJson(const HistoryPicture&);
template std::string partsJson(const HistoryTexts&);
template std::string partsJson(const PreferencesLayout&);
template std::string partsJson(const WaterPanelTexts&);
template std::string partsJson(const WaterProgress&);

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
