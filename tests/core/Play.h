#pragma once

#include "desk/Script.h"

#include <algorithm>
#include <cstdlib>
#include <functional>
#include <gtest/gtest.h>
#include <initializer_list>
#include <sstream>
#include <string>
#include <vector>

namespace kelpa::test {

using Lines = std::vector<std::string>;

/// A desk that a test drives with pieces of script and whose whole journal it compares.
class Play {
  public:
    /// Events of the kinds in `quiet` are left out.
    explicit Play(std::initializer_list<const char*> quiet = {}) {
        for (const char* kind : quiet)
            journal.quiet(kind);
    }

    /// Plays commands and gives the lines that they added to the journal. `desk::FatalEnd` passes through.
    Lines operator()(const std::string& script) {
        return during([&] {
            std::istringstream in(script);
            desk::play(desk, desk::readScript(in));
        });
    }

    /// The lines that a deed adds to the journal.
    Lines during(const std::function<void()>& deed) {
        const auto before = static_cast<std::ptrdiff_t>(journal.lines().size());
        deed();
        return {journal.lines().begin() + before, journal.lines().end()};
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

/// Of some lines those in which one of these texts stands.
inline Lines only(Lines lines, const std::vector<std::string>& texts) {
    std::erase_if(lines, [&](const std::string& line) {
        return std::none_of(texts.begin(), texts.end(),
                            [&](const std::string& text) { return line.find(text) != std::string::npos; });
    });
    return lines;
}

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
