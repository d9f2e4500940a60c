#pragma once

#include "desk/Journal.h"
#include "platform/ports/DefaultsStore.h"
#include "platform/ports/HistoryFiles.h"

#include <map>
#include <variant>

namespace kelpa::desk {

using StoredValue = std::variant<bool, std::int64_t, double, std::string, std::vector<std::string>>;

/// A defaults store in memory that notes what the program writes.
class RecordingStore final : public DefaultsStore {
  public:
    explicit RecordingStore(Journal& journal) : journal_(journal) {}

    /// Writes and removes as another program would: nothing is noted and nothing is set in motion.
    void put(const std::string& key, StoredValue value) { values_[key] = std::move(value); }
    void remove(const std::string& key) { values_.erase(key); }

    [[nodiscard]] std::optional<bool> boolean(std::string_view key) const override { return read<bool>(key); }
    [[nodiscard]] std::optional<std::int64_t> integer(std::string_view key) const override {
        return read<std::int64_t>(key);
    }
    [[nodiscard]] std::optional<double> real(std::string_view key) const override {
        return read<double>(key);
    }
    [[nodiscard]] std::optional<std::string> text(std::string_view key) const override {
        return read<std::string>(key);
    }
    [[nodiscard]] std::optional<std::vector<std::string>> texts(std::string_view key) const override {
        return read<std::vector<std::string>>(key);
    }
    void setBoolean(std::string_view key, bool value) override;
    void setInteger(std::string_view key, std::int64_t value) override;
    void setReal(std::string_view key, double value) override;
    void setText(std::string_view key, const std::string& value) override;
    void setTexts(std::string_view key, const std::vector<std::string>& value) override;

  private:
    template <class T>
    std::optional<T> read(std::string_view key) const {
        const auto found = values_.find(key);
        const T* value = found == values_.end() ? nullptr : std::get_if<T>(&found->second);
        return value ? std::optional(*value) : std::nullopt;
    }
    void write(std::string_view key, StoredValue value, const std::string& noted);

    Journal& journal_;
    std::map<std::string, StoredValue, std::less<>> values_;
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
