#pragma once

#include "base/Calendar.h"
#include "platform/ports/StatusBar.h"

#include <optional>
#include <string_view>

namespace kelpa {

/// The user's own stop that ends by itself at a time of the wall clock, and what the status item's tooltip
/// tells of it meanwhile. There is one at most, and it does not outlive the program.
class TimedPause {
  public:
    /// All must outlive the process's last use. Call before anything else.
    static void wire(Clock& clock, StatusBar& statusBar);

    /// Stops work as the menu's line does, unless that is so already, and starts it again at `end`. Takes the
    /// place of an earlier end.
    static void start(Date end);
    /// Whoever else sets the user's own stop, or its end, means that and no longer a time.
    static void forget();
    /// Lifts a stop whose time has come, unless it has to wait: for the unlock where the screen's lock stops
    /// work, or for a break on the screen to close. Starts no work: that is left to the rules of whoever
    /// calls, in whose way a stop would be. Gives whether it lifted one.
    static bool lift();

    /// When a pause ends that begins now and lasts as long as a text like "45m", "2h" or "1h30m" says, a week
    /// at most; nothing for any other.
    [[nodiscard]] static std::optional<Date> endAfter(std::string_view duration);
    /// The next time that a clock shows "14:30", or the first moment of the next day for "tomorrow"; nothing
    /// for any other text.
    [[nodiscard]] static std::optional<Date> endAt(std::string_view time);
};

} // namespace kelpa
