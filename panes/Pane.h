#pragma once

#include "platform/ports/PreferencesWindow.h"

#include <map>
#include <memory>
#include <string>
#include <utility>
#include <vector>

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

/// A control of a preferences pane and what it stands for: it shows the stored value and takes what a person
/// does. Each kind of control takes what its kind allows; the rest is ignored.
class PaneControl {
  public:
    /// The window must outlive the control.
    PaneControl(PreferencesControl description, ShownPreferences& window)
        : description_(std::move(description)), window_(window) {}
    virtual ~PaneControl() = default;
    PaneControl(const PaneControl&) = delete;
    PaneControl& operator=(const PaneControl&) = delete;

    [[nodiscard]] const PreferencesControl& description() const { return description_; }
    [[nodiscard]] const std::string& id() const { return description_.id; }

    /// Shows what is stored now.
    virtual void show() = 0;
    /// The window is gone; what is still being typed is finished.
    virtual void closed() {}

    /// Takes what a person did.
    virtual void did(PreferencesAct act, const PreferencesValue& value) = 0;

  protected:
    void tell(PreferencesField field, const PreferencesValue& value) { window_.show(id(), field, value); }

  private:
    PreferencesControl description_;
    ShownPreferences& window_;
};

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
    /// Makes a control and adds its row to the last section, of which there must be one.
    template <class Control, class... Arguments>
    void addRow(const std::string& caption, Arguments&&... arguments) {
        add(caption, std::make_unique<Control>(std::forward<Arguments>(arguments)...));
    }

  protected:
    void setAbout(AboutContent about) { layout_.about = std::move(about); }

  private:
    void add(const std::string& caption, std::unique_ptr<PaneControl> control);

    PreferencesPane layout_;
    std::vector<std::unique_ptr<PaneControl>> controls_;
};

} // namespace kelpa
