#pragma once

#include "desk/Script.h"

#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <initializer_list>
#include <sstream>
#include <string>
#include <vector>

namespace kelpa::test {

/// A desk that a test drives with pieces of script and whose whole journal it compares.
class Play {
  public:
    /// Events of the kinds in `quiet` are left out.
    explicit Play(std::initializer_list<const char*> quiet = {}) {
        for (const char* kind : quiet)
            journal.quiet(kind);
    }

    /// Plays commands and gives the lines that they added to the journal. `desk::FatalEnd` passes through.
    std::vector<std::string> operator()(const std::string& script) {
        std::istringstream in(script);
        const auto before = journal.lines().size();
        desk::play(desk, desk::readScript(in));
        return {journal.lines().begin() + static_cast<std::ptrdiff_t>(before), journal.lines().end()};
    }

    desk::VirtualTime time;
    desk::KeptJournal journal{time};
    desk::Desk desk{time, journal, 1};
};

/// Plays one of several desks of a test in a process of its own, as each needs: there is one program a
/// process.
inline void alone(const std::function<void()>& part) {
    EXPECT_EXIT((part(), std::exit(testing::Test::HasFailure() ? EXIT_FAILURE : EXIT_SUCCESS)),
                testing::ExitedWithCode(EXIT_SUCCESS), "");
}

using Lines = std::vector<std::string>;

inline Lines operator+(Lines first, const Lines& second) {
    first.insert(first.end(), second.begin(), second.end());
    return first;
}

/// What a stop and a start of the cycle leave in a journal without titles, at a time like "300.000".
inline Lines stopAt(const std::string& time) {
    return {time + " log info ticktack timer stoped 1.0", time + " item pause play.circle \"- Wrok -\""};
}
inline Lines startAt(const std::string& time, int seconds = 1500) {
    return {time + " log info ticktack timer stoped 1.0",
            time + " log info ticktack timer start " + std::to_string(seconds),
            time + " item pause stop.circle \"- Stop -\""};
}

/// Nobody moves the mouse on a written desk; this lets the cycle run all the same.
inline const std::string mouseMayRest = "store stop_timer_after_mouse_stop bool false\n";

} // namespace kelpa::test
