#pragma once

#include "prefs/PaneControl.h"

#include <memory>
#include <string>
#include <vector>

namespace kelpa {

/// A pane of the preferences window: its layout, and the controls in it.
class Pane {
  public:
    Pane(std::string label, std::string symbol) : layout_{std::move(label), std::move(symbol), {}, {}} {}
    virtual ~Pane() = default;
    Pane(const Pane&) = delete;
    Pane& operator=(const Pane&) = delete;

    [[nodiscard]] const PreferencesPane& layout() const { return layout_; }
    [[nodiscard]] const std::vector<std::unique_ptr<PaneControl>>& controls() const { return controls_; }

    /// Shows everything as it is stored now.
    virtual void show();
    /// The window is gone.
    void closed();

    /// Begins a section below the ones that are there.
    void addSection(std::string title);
    /// Adds a row to the last section, of which there must be one.
    void addRow(std::string caption, std::unique_ptr<PaneControl> control);

  protected:
    void setAbout(AboutContent about) { layout_.about = std::move(about); }

  private:
    PreferencesPane layout_;
    std::vector<std::unique_ptr<PaneControl>> controls_;
};

} // namespace kelpa
