#pragma once

#include "tests/core/Play.h"

#include <functional>
#include <initializer_list>

namespace kelpa::test {

/// A desk whose preferences window is open, and a person in front of it.
class Settings {
  public:
    /// Plays `script`, which launches the program, and opens the window.
    explicit Settings(const std::string& script, std::initializer_list<const char*> quiet = {})
        : play(quiet) {
        play(script + "menu settings\n");
    }

    /// The lines that a deed adds to the journal.
    Lines after(const std::function<void(PreferencesClient&)>& deed) {
        const auto before = play.journal.lines().size();
        deed(client());
        return {play.journal.lines().begin() + static_cast<std::ptrdiff_t>(before),
                play.journal.lines().end()};
    }
    [[nodiscard]] PreferencesClient& client() { return *window().client(); }
    [[nodiscard]] desk::RecordingPreferences& window() { return play.desk.services.preferences(); }
    const desk::RecordingPreferences::Control& operator[](const char* id) { return window().control(id); }

    Play play;
};

} // namespace kelpa::test
