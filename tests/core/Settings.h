#pragma once

#include "tests/core/Play.h"

#include <functional>
#include <initializer_list>

namespace kelpa::test {

/// What a person does in the preferences window, by the names of the deeds.
class Person {
  public:
    explicit Person(PreferencesClient& client) : client_(client) {}

    void cameToFront() const { client_.cameToFront(); }
    void closed() const { client_.closed(); }
    void typed(const char* id, const std::string& text) const {
        client_.did(id, PreferencesAct::Typed, text);
    }
    void entered(const char* id, const std::string& text) const {
        client_.did(id, PreferencesAct::Entered, text);
    }
    void switched(const char* id, bool on) const { client_.did(id, PreferencesAct::Entered, on); }
    void chosen(const char* id, std::int64_t value) const { client_.did(id, PreferencesAct::Entered, value); }
    void stepped(const char* id, std::int64_t direction) const {
        client_.did(id, PreferencesAct::Stepped, direction);
    }
    void timeEntered(const char* id, int hour, int minute) const { chosen(id, 60 * hour + minute); }
    void added(const char* id, const PreferencesValue& entry) const {
        client_.did(id, PreferencesAct::Added, entry);
    }
    void edited(const char* id, const std::string& old, const std::string& text) const {
        client_.did(id, PreferencesAct::Edited, PreferencesEdit{old, text});
    }
    void removed(const char* id, const PreferencesValue& entry) const {
        client_.did(id, PreferencesAct::Removed, entry);
    }

  private:
    PreferencesClient& client_;
};

/// Of texts in a list, as a window is told them.
inline std::vector<std::string> texts(const std::vector<PreferencesEntry>& entries) {
    std::vector<std::string> all;
    for (const PreferencesEntry& entry : entries)
        all.push_back(entry.text);
    return all;
}

/// A desk whose preferences window is open, and a person in front of it.
class Settings {
  public:
    /// Plays `script`, which launches the program, and opens the window.
    explicit Settings(const std::string& script, std::initializer_list<const char*> quiet = {})
        : play(quiet) {
        play(script + "menu settings\n");
    }

    /// The lines that a deed adds to the journal.
    Lines after(const std::function<void(Person)>& deed) {
        return play.during([&] { deed(person()); });
    }
    [[nodiscard]] Person person() { return Person(*window().client()); }
    [[nodiscard]] desk::RecordingPreferences& window() { return play.desk.services.preferences; }
    const desk::RecordingPreferences::Control& operator[](const char* id) { return window().control(id); }

    Play play;
};

} // namespace kelpa::test
