#pragma once

#include "prefs/App.h"
#include "prefs/Pane.h"

#include <string>

namespace kelpa {

/// The About pane: what the program says of itself. Without a picture it shows its glyph of the icon font.
class PrefAboutView final : public Pane {
  public:
    /// Both must outlive the pane.
    PrefAboutView(App& app, PreferencesWindow& window);

    /// Tells the copyright line again: a year may have ended since it was told.
    void show() override;

    /// Version and build as people read them, as in "v1.2.0(34)".
    [[nodiscard]] static std::string versionLine(const AboutApp& about);

  private:
    App& app_;
    PreferencesWindow& window_;
};

} // namespace kelpa
