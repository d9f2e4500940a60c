#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <variant>
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
    Button,      ///< its label on a button, which has no value
};

/// The kinds' names, in their order, where a face finds by its name what shows one.
inline constexpr std::array<std::string_view, 11> preferencesControlKinds = {
    "switch",    "number", "accumulator", "text",    "picker", "segments",
    "timeOfDay", "tiles",  "timePoints",  "prompts", "button"};

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
    std::string label; ///< beside a switch, on a button; for other controls what a screen reader calls it
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

/// What the about panel says, and the About pane, whose copyright is told anew whenever it is shown.
struct AboutContent {
    std::string icon;      ///< name of the application's picture; empty when there is none
    std::string glyph;     ///< shown by the pane instead, in the icon font
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

/// One of what a control offers or lists.
struct PreferencesEntry {
    std::int64_t value =
        0; ///< stands for the entry where one is chosen; of a time its minutes since midnight
    std::string text;
    std::string removal; ///< names the button that removes a time
    bool operator==(const PreferencesEntry&) const = default;
};

/// A text of a list of prompts that a person replaced by another.
struct PreferencesEdit {
    std::string old;
    std::string text;
    bool operator==(const PreferencesEdit&) const = default;
};

/// Whatever a control shows, and whatever a person enters in one. A time of day is a number: its minutes
/// since midnight.
using PreferencesValue =
    std::variant<bool, std::int64_t, std::string, std::vector<PreferencesEntry>, PreferencesEdit>;

/// What can be said of a control, in the order in which a window has to be told of it.
enum class PreferencesField {
    Entries, ///< of a picker, of segments, of tiles, of time points or of prompts, in their order
    Value, ///< whether a switch is on; the text of a number or a text, which takes the place of what is being
           ///< typed; the value of the chosen entry; a time, of time points the one that adding starts at
    Hint,  ///< a line below the control that explains it; empty for none
    Problem, ///< a line below the control that says why what was typed is not taken; empty for none
    Enabled, ///< at first it is
    Visible, ///< at first it is
};

/// What a person does to a control.
enum class PreferencesAct {
    Typed,   ///< the text of a field while it is being typed
    Entered, ///< another value: of a switch, of what is chosen, of a time; of a field that was left or
             ///< confirmed
    Stepped, ///< a click on minus (-1) or plus (1)
    Added,   ///< a time or a prompt
    Edited,  ///< a prompt: a `PreferencesEdit`
    Removed, ///< a time or a prompt
    Reset,   ///< the list of prompts; the value has no meaning
    Pressed, ///< a button; the value has no meaning
};

/// What a person does in the preferences window; the core implements it.
class PreferencesClient {
  public:
    virtual ~PreferencesClient() = default;
    /// The window was shown or came to the front: what it shows may be out of date.
    virtual void cameToFront() = 0;
    virtual void closed() = 0;
    /// The core says what holds afterwards, also where that is what it was, but not while somebody types.
    virtual void did(const std::string& id, PreferencesAct act, const PreferencesValue& value) = 0;
    /// The window has lost what it was told: says all of it again.
    virtual void showAgain() = 0;
};

/// Stands for a control of the About pane, whose value is the line that has the year in it.
inline constexpr const char* copyrightLine = "copyright";

/// The program's preferences window. It shows what it was told last; what a person does is only reported, and
/// comes back as a value when the core took it. A section whose rows are all hidden is hidden with its title.
class PreferencesWindow {
  public:
    virtual ~PreferencesWindow() = default;
    /// Called once, before the first value and before the window is shown. `client` outlives the window.
    virtual void setLayout(const PreferencesLayout& layout, PreferencesClient& client) = 0;
    /// Shows the window, or brings it to the front where it is already shown.
    virtual void show() = 0;
    /// Shows a value in a field of a control. Ignores what the control cannot show.
    virtual void show(const std::string& id, PreferencesField field, const PreferencesValue& value) = 0;
};

} // namespace kelpa
