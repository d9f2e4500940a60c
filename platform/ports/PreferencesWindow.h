#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

namespace kelpa {

/// What a person sees of one setting.
enum class PreferencesControlKind {
    Switch,      ///< on or off, with its own label beside it
    Number,      ///< a field of digits with a stepper
    Accumulator, ///< a minus button, a field of digits, a plus button
    Text,        ///< one line of text
    Picker,      ///< one of a few entries, as a drop-down list
    Segments,    ///< one of a few entries, side by side
    TimeOfDay,   ///< hour and minute, in the user's own way of writing them
    Tiles,       ///< one of a grid of entries
    TimePoints,  ///< a grid of times of day, each with its remove button, and a last tile that adds one
    Prompts,     ///< a scrolling list of texts to add to, edit in place, delete from and reset
};

/// A button that shows only a symbol, and its name for those who do not see it.
struct SymbolButton {
    std::string symbol;
    std::string name;
};

/// The buttons of a list of prompts.
struct PromptListButtons {
    SymbolButton add;
    SymbolButton edit;
    std::string cancel; ///< in words: gives up what is being edited
    SymbolButton remove;
    SymbolButton reset;
};

struct PreferencesControl {
    std::string id; ///< unique in the window; names the control from now on
    PreferencesControlKind kind = PreferencesControlKind::Switch;
    std::string label; ///< beside a switch; for every other control what a screen reader calls it
    std::string unit;  ///< after the control; empty for none
};

struct PreferencesRow {
    std::string caption; ///< in the right-aligned column before the control; empty for none
    PreferencesControl control;
};

struct PreferencesSection {
    std::string title; ///< empty for none
    std::vector<PreferencesRow> rows;
};

/// What the About pane says; its copyright is told anew whenever it is shown.
struct AboutContent {
    std::string icon;      ///< name of the application's picture; empty when there is none
    std::string glyph;     ///< shown instead, in the icon font
    std::string glyphFont; ///< the icon font's name
    std::string name;
    std::string version;
    std::string copyright;
    std::string link; ///< text of the link
    std::string linkAddress;
};

/// One tab and what stands under it: sections of rows, or the About pane.
struct PreferencesPane {
    std::string label;
    std::string symbol;
    std::vector<PreferencesSection> sections;
    std::optional<AboutContent> about;
};

/// Everything of the window that never changes, ready to show.
struct PreferencesLayout {
    std::string title;
    int minimumWidth = 0; ///< points, of the content
    int minimumHeight = 0;
    std::vector<PreferencesPane> panes;
    PromptListButtons prompts;
    SymbolButton addTimePoint; ///< the tile that adds a time
    std::string removalSymbol; ///< on each time's button that removes it
    SymbolButton decrease;     ///< also names a stepper's lower half
    SymbolButton increase;
};

struct PreferencesChoice {
    std::int64_t value = 0;
    std::string text;
    bool operator==(const PreferencesChoice&) const = default;
};

struct TimePoint {
    int hour = 0;
    int minute = 0;
    std::string text;
    std::string removal; ///< names the button that removes it
    bool operator==(const TimePoint&) const = default;
};

/// What a person does in the preferences window; the core implements it.
class PreferencesClient {
  public:
    virtual ~PreferencesClient() = default;
    /// The window was shown or came to the front: what it shows may be out of date.
    virtual void cameToFront() = 0;
    virtual void closed() = 0;
    virtual void switched(const std::string& id, bool on) = 0;
    /// The text of a field while it is being typed.
    virtual void typed(const std::string& id, const std::string& text) = 0;
    /// The text of a field that was left or confirmed.
    virtual void entered(const std::string& id, const std::string& text) = 0;
    /// A click on minus (-1) or plus (1).
    virtual void stepped(const std::string& id, int direction) = 0;
    virtual void chosen(const std::string& id, std::int64_t value) = 0;
    virtual void timeEntered(const std::string& id, int hour, int minute) = 0;
    virtual void timePointAdded(const std::string& id, int hour, int minute) = 0;
    virtual void timePointRemoved(const std::string& id, int hour, int minute) = 0;
    virtual void promptAdded(const std::string& id, const std::string& text) = 0;
    virtual void promptEdited(const std::string& id, const std::string& old, const std::string& text) = 0;
    virtual void promptDeleted(const std::string& id, const std::string& text) = 0;
    virtual void promptsReset(const std::string& id) = 0;
};

/// The program's preferences window. It shows what it was told last; what a person does is only reported, and
/// comes back as a value when the core took it. A section whose rows are all hidden is hidden with its title.
class PreferencesWindow {
  public:
    virtual ~PreferencesWindow() = default;
    /// Called once, before the first value and before the window is shown. `client` outlives the window.
    virtual void setLayout(const PreferencesLayout& layout, PreferencesClient& client) = 0;
    /// Shows the window, or brings it to the front where it is already shown.
    virtual void show() = 0;

    /// The line of the About pane that has the year in it.
    virtual void setCopyright(const std::string& line) = 0;
    virtual void setSwitch(const std::string& id, bool on) = 0;
    /// The text of a number or text field. Takes the place of what is being typed.
    virtual void setText(const std::string& id, const std::string& text) = 0;
    /// The entries of a picker, of segments or of tiles, in order.
    virtual void setChoices(const std::string& id, const std::vector<PreferencesChoice>& choices) = 0;
    virtual void setChosen(const std::string& id, std::int64_t value) = 0;
    /// The value of a time of day; of time points the one that adding another starts at.
    virtual void setTimeOfDay(const std::string& id, int hour, int minute) = 0;
    virtual void setTimePoints(const std::string& id, const std::vector<TimePoint>& points) = 0;
    virtual void setPrompts(const std::string& id, const std::vector<std::string>& prompts) = 0;
    /// A line below the control that explains it; empty for none.
    virtual void setHint(const std::string& id, const std::string& hint) = 0;
    /// A line below the control that says why what was typed is not taken; empty for none.
    virtual void setProblem(const std::string& id, const std::string& problem) = 0;
    virtual void setEnabled(const std::string& id, bool enabled) = 0;
    virtual void setVisible(const std::string& id, bool visible) = 0;
};

} // namespace kelpa
