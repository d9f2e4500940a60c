#pragma once

#include "desk/Journal.h"
#include "platform/ports/DefaultsStore.h"
#include "platform/ports/HistoryFiles.h"

#include <map>

namespace kelpa::desk {

/// A defaults store in memory that notes what the program writes.
class RecordingStore final : public DefaultsStore {
  public:
    explicit RecordingStore(Journal& journal) : journal_(journal) {}

    /// Writes and removes as another program would: nothing is noted and nothing is set in motion.
    void put(const std::string& key, StoreValue value) { values_[key] = std::move(value); }
    void remove(const std::string& key) { values_.erase(key); }

    [[nodiscard]] std::optional<StoreValue> value(std::string_view key) const override;
    void set(std::string_view key, const StoreValue& value) override;

  private:
    Journal& journal_;
    std::map<std::string, StoreValue, std::less<>> values_;
};

/// A history of which each line that is written is noted. Scripts may fill its disk.
class RecordingHistory final : public HistoryFiles {
  public:
    explicit RecordingHistory(Journal& journal) : journal_(journal) {}

    std::optional<std::string> append(const std::string& month, std::string_view header,
                                      std::string_view line) override;
    [[nodiscard]] Content read(const std::string& month) override;
    std::optional<std::string> removeAll() override;

    bool diskFull = false;
    std::map<std::string, std::string> files; ///< by month

  private:
    Journal& journal_;
};

/// Texts as a JSON array on one line, and back; nothing for what is not one.
[[nodiscard]] std::string jsonTexts(const std::vector<std::string>& texts);
[[nodiscard]] std::optional<std::vector<std::string>> textsFromJson(std::string_view json);

} // namespace kelpa::desk
