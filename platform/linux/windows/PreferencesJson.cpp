#include "platform/linux/windows/PreferencesJson.h"

#include "platform/linux/helper/ViewProtocol.h"
#include "platform/linux/windows/JsonWriter.h"

#include <algorithm>

namespace kelpa {

namespace {

/// Bytes of a list, each of which may double when the message is made, of which the longest holds 512 KiB.
constexpr std::size_t mostBytes = 240000;
/// Of one text; a control character is written as six.
constexpr std::size_t mostOfOne = 6 * wire::view::longestText;
/// One every five minutes of a day; some thousands would keep the view busy for seconds.
constexpr std::size_t mostTimePoints = 288;

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

void write(JsonWriter& json, const PreferencesRow& row) {
    json.beginObject().member("caption", row.caption).member("id", row.control.id);
    json.member("kind", kindName(row.control.kind)).member("label", row.control.label);
    json.member("unit", row.control.unit).endObject();
}

void write(JsonWriter& json, const PreferencesSection& section) {
    json.beginObject().member("title", section.title).key("rows").beginArray();
    for (const PreferencesRow& row : section.rows)
        write(json, row);
    json.endArray().endObject();
}

void write(JsonWriter& json, const AboutContent& about) {
    json.beginObject().member("icon", about.icon).member("glyph", about.glyph);
    json.member("glyphFont", about.glyphFont).member("name", about.name).member("version", about.version);
    json.member("copyright", about.copyright).member("link", about.link);
    json.member("linkAddress", about.linkAddress).endObject();
}

void write(JsonWriter& json, const PreferencesPane& pane) {
    json.beginObject().member("label", pane.label).member("symbol", pane.symbol);
    json.key("sections").beginArray();
    for (const PreferencesSection& section : pane.sections)
        write(json, section);
    json.endArray();
    if (pane.about)
        write(json.key("about"), *pane.about);
    json.endObject();
}

void write(JsonWriter& json, std::string_view key, const SymbolButton& button) {
    json.key(key).beginObject();
    json.member("symbol", button.symbol).member("name", button.name).endObject();
}

void writeButtons(JsonWriter& json, const PreferencesLayout& layout) {
    json.key("buttons").beginObject();
    write(json, "addPrompt", layout.prompts.add);
    write(json, "editPrompt", layout.prompts.edit);
    json.member("cancelPrompt", layout.prompts.cancel);
    write(json, "removePrompt", layout.prompts.remove);
    write(json, "resetPrompts", layout.prompts.reset);
    write(json, "addTimePoint", layout.addTimePoint);
    json.member("removalSymbol", layout.removalSymbol);
    write(json, "decrease", layout.decrease);
    write(json, "increase", layout.increase);
    json.endObject();
}

} // namespace

std::string layoutJson(const PreferencesLayout& layout) {
    JsonWriter json;
    json.beginObject().key("minimumWidth").number(layout.minimumWidth);
    json.key("minimumHeight").number(layout.minimumHeight);
    writeButtons(json, layout);
    json.key("panes").beginArray();
    for (const PreferencesPane& pane : layout.panes)
        write(json, pane);
    json.endArray().endObject();
    return json.written();
}

std::string aboutJson(const AboutContent& about) {
    JsonWriter json;
    write(json, about);
    return json.written();
}

std::string choicesJson(const std::vector<PreferencesChoice>& choices) {
    JsonWriter json;
    json.beginArray();
    for (const auto& [value, text] : choices)
        json.beginObject().member("value", std::to_string(value)).member("text", text).endObject();
    json.endArray();
    return json.written();
}

std::string timePointsJson(const std::vector<TimePoint>& points) {
    JsonWriter json;
    json.beginArray();
    for (std::size_t i = 0; i < std::min(points.size(), mostTimePoints); ++i) {
        const auto& [hour, minute, text, removal] = points[i];
        const std::string value = std::to_string(hour) + ":" + std::to_string(minute);
        json.beginObject().member("value", value).member("text", text);
        json.member("removal", removal).endObject();
    }
    json.endArray();
    return json.written();
}

std::string promptsJson(const std::vector<std::string>& prompts) {
    JsonWriter json;
    json.beginArray();
    for (const std::string& prompt : prompts) {
        if (json.written().size() + mostOfOne > mostBytes)
            break;
        json.beginObject().member("text", prompt).endObject();
    }
    json.endArray();
    return json.written();
}

} // namespace kelpa
