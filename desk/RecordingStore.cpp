#include "desk/RecordingStore.h"

#include "base/Text.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace kelpa::desk {

namespace {

struct Noted {
    std::string operator()(bool value) const { return value ? "bool true" : "bool false"; }
    std::string operator()(std::int64_t value) const { return "int " + std::to_string(value); }
    std::string operator()(double value) const { return "real " + decimalText(value); }
    std::string operator()(const std::string& value) const { return "text " + oneLine(value); }
    std::string operator()(const std::vector<std::string>& value) const { return "list " + jsonTexts(value); }
};

} // namespace

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

std::optional<StoreValue> RecordingStore::value(std::string_view key) const {
    const auto found = values_.find(key);
    return found == values_.end() ? std::nullopt : std::optional(found->second);
}

void RecordingStore::set(std::string_view key, const StoreValue& value) {
    values_.insert_or_assign(std::string(key), value);
    journal_.note("set", std::string(key) + " " + std::visit(Noted(), value));
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
