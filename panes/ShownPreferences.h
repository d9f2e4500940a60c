#pragma once

#include "platform/ports/PreferencesWindow.h"

#include <map>
#include <string>
#include <utility>

namespace kelpa {

/// What the preferences window shows: all that it was told, and what a person has typed since. It is told
/// only what it does not show yet, so that everything can be shown again at no cost whenever it may have
/// changed.
class ShownPreferences {
  public:
    /// The window must outlive this.
    explicit ShownPreferences(PreferencesWindow& window) : window_(window) {}

    void show(const std::string& id, PreferencesField field, const PreferencesValue& value);
    /// A person did something: what the control shows is what was typed, else it is not known any more.
    void did(const std::string& id, PreferencesAct act, const PreferencesValue& value);
    /// Tells the window everything again.
    void showAgain() const;

  private:
    using Place = std::pair<std::string, PreferencesField>; ///< a control's id, and what of it

    PreferencesWindow& window_;
    std::map<Place, PreferencesValue> shown_;
};

} // namespace kelpa
