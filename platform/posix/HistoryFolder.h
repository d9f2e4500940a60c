#pragma once

#include "platform/ports/HistoryFiles.h"

#include <utility>

namespace kelpa {

/// The history as CSV files in a folder, "2026-11.csv", which only this user can read. A line goes out in one
/// write at the end of its file, so that two programs may write at once.
class HistoryFolder final : public HistoryFiles {
  public:
    /// The folder need not be there before the first line. Without one nothing is kept.
    explicit HistoryFolder(std::optional<std::string> folder) : folder_(std::move(folder)) {}

    std::optional<std::string> append(const std::string& month, std::string_view header,
                                      std::string_view line) override;
    [[nodiscard]] Content read(const std::string& month) override;
    std::optional<std::string> removeAll() override;

  private:
    [[nodiscard]] std::string path(const std::string& month) const { return *folder_ + "/" + month + ".csv"; }

    std::optional<std::string> folder_;
};

} // namespace kelpa
