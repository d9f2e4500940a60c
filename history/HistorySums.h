#pragma once

#include "base/Calendar.h"
#include "platform/ports/HistoryFiles.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace kelpa {

/// A day of the Gregorian calendar.
using HistoryDate = std::chrono::sys_days;

/// What the lines of a day, or of some days, come to. A period that crosses midnight belongs to the day on
/// which it began; the greeting of a new day is no break.
struct HistorySum {
    std::int64_t workSeconds = 0;
    std::int64_t breaksTaken = 0;   ///< to their end, or until the screen was locked
    std::int64_t breaksSkipped = 0; ///< by Skip or the notice
    std::int64_t millilitres = 0;
    std::int64_t target = 0; ///< millilitres; 0 where nobody drank
    bool operator==(const HistorySum&) const = default;

    [[nodiscard]] bool empty() const { return *this == HistorySum{}; }
    HistorySum& operator+=(const HistorySum& other);
};

struct HistorySums {
    std::vector<HistorySum> days;      ///< from the first to the last that was asked for
    std::vector<std::string> problems; ///< why a month is missing, in words
};

/// Reads what was written from `first` to `last`, which is no earlier, and sums it by day. One month's file
/// is in memory at a time. Lines that are damaged or foreign are passed over.
[[nodiscard]] HistorySums sumsOf(HistoryFiles& files, HistoryDate first, HistoryDate last);

[[nodiscard]] HistoryDate dateOf(const CivilTime& time);
/// "2026-11-23", and the day of such a text; nothing where there is no such day.
[[nodiscard]] std::string dateText(HistoryDate date);
[[nodiscard]] std::optional<HistoryDate> historyDate(std::string_view text);

} // namespace kelpa
