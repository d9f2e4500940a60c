#pragma once

#include "base/Calendar.h"
#include "prefs/PromptState.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace kelpa {

enum class HistoryEvent { Work, Break, Drink };

/// How a work period or a break ended. In the file each is a word, none of which begins another: it stands
/// last in its line, so that a line that was cut off is never taken for a whole one.
enum class HistoryEnd {
    // Of work
    Break,     ///< the break came that it leads to
    NewDay,    ///< the greeting of a new day came
    Paused,    ///< by hand
    Idle,      ///< nobody moved the mouse
    Restarted, ///< another work period took its place
    // Of either
    Locked, ///< the screen was
    Quit,   ///< the program was
    // Of a break
    Complete, ///< its time was up
    Skipped,
    Notice,   ///< the notice on its screen was followed
    Replaced, ///< another break took its place
    Drunk,    ///< of what somebody drank
};

/// One line of the history. What its event does not have is 0.
struct HistoryEntry {
    CivilTime start; ///< by the local clock
    HistoryEvent event = HistoryEvent::Work;
    BreakKind kind = BreakKind::None; ///< of a break
    std::int64_t length = 0;          ///< seconds that a break was to last
    std::int64_t seconds = 0;         ///< that were counted
    std::int64_t postponed = 0;       ///< how often a break was
    bool early = false;               ///< a break was asked for before it was due
    std::int64_t millilitres = 0;
    std::int64_t target = 0; ///< millilitres a day, when somebody drank
    HistoryEnd end = HistoryEnd::Break;
    bool operator==(const HistoryEntry&) const = default;
};

/// The names of the columns, which are the first line of a file. Lines carry no line feed.
inline constexpr std::string_view historyHeader =
    "date,time,event,kind,length_s,seconds,postponed,begun,ml,target_ml,end";
[[nodiscard]] std::string lineOf(const HistoryEntry& entry);
/// Nothing for a line that is not whole, or is somebody else's. Takes what a spreadsheet makes of a line:
/// texts in quotation marks, hours without a leading zero, a carriage return at the end.
[[nodiscard]] std::optional<HistoryEntry> entryOf(std::string_view line);

/// The month of a file, such as "2026-11".
[[nodiscard]] std::string historyMonth(int year, int month);

} // namespace kelpa
