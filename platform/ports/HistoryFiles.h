#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace kelpa {

/// Where the history is kept: one text file for each month, which other programs may read and write as well.
class HistoryFiles {
  public:
    virtual ~HistoryFiles() = default;

    struct Content {
        std::string bytes;   ///< empty where there is no file
        std::string problem; ///< why nothing can be read of a file that is there; empty when all is well
    };

    /// Adds a line, given without its line feed, behind whatever the file of a month such as "2026-11" holds,
    /// and begins a new file with `header`. Gives what is wrong, in words, when the line is not stored whole.
    virtual std::optional<std::string> append(const std::string& month, std::string_view header,
                                              std::string_view line) = 0;
    [[nodiscard]] virtual Content read(const std::string& month) = 0;
    /// Deletes the files of all months, and nothing else. Gives what is wrong when one is still there.
    virtual std::optional<std::string> removeAll() = 0;
};

} // namespace kelpa
