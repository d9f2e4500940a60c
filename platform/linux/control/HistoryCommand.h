#pragma once

#include "history/HistorySums.h"

#include <optional>
#include <span>
#include <string>
#include <vector>

namespace kelpa {

/// What the command line wants to know of the history.
struct HistoryCommand {
    enum class Form { Table, Json, Csv };
    Form form = Form::Table;
    std::int64_t days = 14; ///< up to today, where no day is named
    std::optional<HistoryDate> from;
    std::optional<HistoryDate> to;
    bool show = false; ///< a window of the running program, which knows nothing of the rest
};

struct ParsedHistory {
    HistoryCommand command;
    std::string error; ///< empty when all is well
};
/// Reads a command, whose first argument is its word.
[[nodiscard]] ParsedHistory parseHistory(std::span<const std::string> arguments);

/// What is printed of the days from `first` on. A table begins with the first day that has something to tell;
/// its bars are made of blocks where the terminal shows them.
[[nodiscard]] std::string historyTable(HistoryDate first, const std::vector<HistorySum>& days, bool blocks);
[[nodiscard]] std::string historyJson(HistoryDate first, const std::vector<HistorySum>& days);
[[nodiscard]] std::string historyCsv(HistoryDate first, const std::vector<HistorySum>& days);

/// Reads the files itself and prints; no program need run. Gives the exit code: 1 where a file that is there
/// cannot be read.
[[nodiscard]] int runHistory(const HistoryCommand& command);

} // namespace kelpa
