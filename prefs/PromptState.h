#pragma once

#include "base/Published.h"
#include "platform/ports/System.h"
#include "prefs/PrefState.h"

#include <cstdint>
#include <string>
#include <vector>

namespace kelpa {

enum class BreakKind { None, Short, Long, NewDay };

/// Decides at the start of each break what the screen shows and how long the break lasts, and ends it.
class PromptState {
  public:
    PromptState(App& app, RandomBelow random);

    Published<std::string> prompt;
    Published<bool> showSkipButton{false};

    /// Starts the next break of the cycle, a short or a long one. A cycle length of 0 ends the process.
    void showBreak();
    /// Greets a new day for ten seconds; the cycle does not advance.
    void showNewDay();
    /// Ends the break that shows; work begins again unless the user paused by hand.
    void closePrompt();
    /// Makes the next break the first of a new cycle.
    void resetShortBreakTimes() { shortBreakTimes_ = 0; }
    /// Of the break that was started last, also when it is over; none before the first.
    [[nodiscard]] BreakKind lastKind() const { return lastKind_; }
    /// Of the break that `showBreak` would start now, which it does not; a short one where the cycle's length
    /// is 0.
    [[nodiscard]] BreakKind nextKind() const;

  private:
    [[nodiscard]] std::int64_t cycleLength() const;
    [[nodiscard]] std::int64_t nextLength();
    [[nodiscard]] std::string nextPrompt();
    [[nodiscard]] std::string anyOf(const std::vector<std::string>& texts, const std::string& otherwise);

    App& app_;
    RandomBelow random_;
    std::int64_t shortBreakTimes_ = 0; ///< position of the last break in the cycle
    BreakKind lastKind_ = BreakKind::None;
};

} // namespace kelpa
