#include "desk/RecordingStore.h"

#include "base/Text.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace kelpa::desk {

std::string jsonTexts(const std::vector<std::string>& texts) {
    std::string json;
    for (const std::string& text : texts)
        json += (json.empty() ? "" : ",") + inQuotes(text);
    return "[" + json + "]";
}

std::optional<std::vector<std::string>> textsFromJson(std::string_view json) {
    const auto list = nlohmann::json::parse(json, nullptr, false);
    const auto isText = [](const auto& entry) { return entry.is_string(); };
    if (!list.is_array() || !std::all_of(list.begin(), list.end(), isText))
        return std::nullopt;
    return list.get<std::vector<std::string>>();
}

void RecordingStore::write(std::string_view key, StoredValue value, const std::string& noted) {
    values_.insert_or_assign(std::string(key), std::move(value));
    journal_.note("set", std::string(key) + " " + noted);
}

void RecordingStore::setBoolean(std::string_view key, bool value) {
    write(key, value, value ? "bool true" : "bool false");
}

void RecordingStore::setInteger(std::string_view key, std::int64_t value) {
    write(key, value, "int " + std::to_string(value));
}

void RecordingStore::setReal(std::string_view key, double value) {
    write(key, value, "real " + decimalText(value));
}

void RecordingStore::setText(std::string_view key, const std::string& value) {
    write(key, value, "text " + oneLine(value));
}

void RecordingStore::setTexts(std::string_view key, const std::vector<std::string>& value) {
    write(key, value, "list " + jsonTexts(value));
}

std::optional<std::string> RecordingHistory::append(const std::string& month, std::string_view header,
                                                    std::string_view line) {
    if (diskFull)
        return "No space left on device";
    std::string& file = files[month];
    if (file.empty())
        file.append(header).append("\n");
    file.append(line).append("\n");
    journal_.note("history", month + " " + std::string(line));
    return std::nullopt;
}

HistoryFiles::Content RecordingHistory::read(const std::string& month) {
    const auto found = files.find(month);
    return {found == files.end() ? std::string() : found->second, {}};
}

std::optional<std::string> RecordingHistory::removeAll() {
    if (diskFull)
        return "Device or resource busy";
    files.clear();
    journal_.note("history", "forgotten");
    return std::nullopt;
}

} // namespace kelpa::desk
