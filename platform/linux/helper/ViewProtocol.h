#pragma once

#include <array>
#include <cstddef>
#include <optional>
#include <string_view>

/// What the program and `kelpa-view` say to each other. A window is known by a number that the program gives.
namespace kelpa::wire::view {

// From the program to the view.
/// open WINDOW KIND TITLE X Y WIDTH HEIGHT SCREEN: makes a hidden window, in pixels of the desktop, on the
/// screen of that connector name; for a window that is there, gives it this title and place. A window of the
/// window manager's gets its place from `bounds`, else stands in the middle of that screen.
inline constexpr std::string_view open = "open";
/// set WINDOW PROPERTY VALUE: a property of the window's content.
inline constexpr std::string_view set = "set";
/// tell WINDOW CONTROL FIELD TYPE VALUE: what a control of the preferences shows.
inline constexpr std::string_view tell = "tell";
/// show WINDOW: in front of everything.
inline constexpr std::string_view show = "show";
/// hide WINDOW
inline constexpr std::string_view hide = "hide";
/// alpha WINDOW OPACITY: from 0 to 1, at once.
inline constexpr std::string_view alpha = "alpha";
/// fade WINDOW OPACITY SECONDS: from what is seen now.
inline constexpr std::string_view fade = "fade";
/// drop WINDOW: it never comes back.
inline constexpr std::string_view drop = "drop";
/// activate: the keyboard belongs to the windows that are shown.
inline constexpr std::string_view activate = "activate";
/// deactivate: the keyboard is given back.
inline constexpr std::string_view deactivate = "deactivate";
/// ping: wants nothing but to be taken in.
inline constexpr std::string_view ping = "ping";

// From the view to the program.
/// ready: it has started well.
inline constexpr std::string_view ready = "ready";
/// action WINDOW NAME VALUE: what a person did in the window's content; the value may be empty.
inline constexpr std::string_view action = "action";
/// did WINDOW CONTROL ACT TYPE VALUE [TEXT]: what a person did to a control of the preferences.
inline constexpr std::string_view did = "did";
/// taken COUNT: so many lines were taken in since the start, and what they ask for is done.
inline constexpr std::string_view taken = "taken";
/// dragged WINDOW X Y: a person dragged the window, whose upper left corner is there now, as in `open`.
inline constexpr std::string_view dragged = "dragged";
/// input: a person uses mouse or keyboard in a window; five times a second at most, and only where the
/// display server does not tell the program itself.
inline constexpr std::string_view input = "input";
/// warning TEXT: for the log.
inline constexpr std::string_view warning = "warning";

/// Bytes of a text that somebody stored: more than a window can show, and far less than a line can carry. Of
/// a longer one the beginning is shown.
inline constexpr std::size_t longestText = 16384;

// Kinds of windows and what their contents understand.
inline constexpr std::string_view breakKind = "break";
inline constexpr std::string_view newFeatureText = "newFeatureText";
inline constexpr std::string_view waterReminderText = "waterReminderText";
inline constexpr std::string_view hintText = "hintText";
inline constexpr std::string_view skipText = "skipText";
/// Symbols are known by the names of their drawings.
inline constexpr std::string_view linkSymbol = "linkSymbol";
inline constexpr std::string_view prompt = "prompt";
inline constexpr std::string_view count = "count";
inline constexpr std::string_view skipOffered = "skipOffered";
inline constexpr std::string_view skipAction = "skip";
inline constexpr std::string_view noticeAction = "notice";

inline constexpr std::string_view waterKind = "water";
inline constexpr std::string_view finishedText = "finishedText";
inline constexpr std::string_view percentText = "percentText";
inline constexpr std::string_view remainText = "remainText";
inline constexpr std::string_view wellDoneText = "wellDoneText";
inline constexpr std::string_view doneText = "doneText";
inline constexpr std::string_view closeText = "closeText";
inline constexpr std::string_view cup = "cup";
/// Pairs of lines: millilitres, and the text that offers them.
inline constexpr std::string_view amounts = "amounts";
inline constexpr std::string_view finished = "finished";
inline constexpr std::string_view percent = "percent";
/// Empty once the day's target is met.
inline constexpr std::string_view remain = "remain";
inline constexpr std::string_view fraction = "fraction";
inline constexpr std::string_view tip = "tip";
/// Empty when nothing is counted down.
inline constexpr std::string_view remaining = "remaining";
inline constexpr std::string_view selectedAmount = "selectedAmount";
/// 0 offers the answers; the view itself sets it to 1 with the first one, and lets no other through.
inline constexpr std::string_view answered = "answered";
/// With the millilitres as its value.
inline constexpr std::string_view amountAction = "amount";
inline constexpr std::string_view doneAction = "done";
inline constexpr std::string_view closeAction = "close";

// Windows that the window manager looks after.
/// X Y WIDTH HEIGHT, separated by blanks, in the toolkit's units: where the window was when it was closed
/// last.
inline constexpr std::string_view bounds = "bounds";
/// The person closed the window; with its bounds as its value.
inline constexpr std::string_view closedAction = "closed";

inline constexpr std::string_view aboutKind = "about";
/// What the panel says, as JSON.
inline constexpr std::string_view about = "about";

inline constexpr std::string_view updateKind = "update";
inline constexpr std::string_view headline = "headline";
inline constexpr std::string_view text = "text";
/// Text and address of a link; empty for none.
inline constexpr std::string_view notes = "notes";
inline constexpr std::string_view notesLink = "notesLink";
/// Pairs of lines: the action of a button, and its text. The last one is the one that leads on.
inline constexpr std::string_view buttons = "buttons";
/// A fraction; below 0 while nobody knows how long it takes, empty when there is none.
inline constexpr std::string_view progress = "progress";

inline constexpr std::string_view preferencesKind = "preferences";
/// Everything that never changes, as JSON.
inline constexpr std::string_view layout = "layout";
/// The place of the pane that shows.
inline constexpr std::string_view currentPane = "current";
/// The same, which a person turned to.
inline constexpr std::string_view turnedAction = "turned";
/// The window has the keyboard again.
inline constexpr std::string_view cameToFrontAction = "cameToFront";
/// The kinds of controls, and what is said of them and done to them, in the order of
/// `PreferencesControlKind`, `PreferencesField` and `PreferencesAct`.
inline constexpr std::array<std::string_view, 10> kinds = {"switch",     "number",   "accumulator", "text",
                                                           "picker",     "segments", "timeOfDay",   "tiles",
                                                           "timePoints", "prompts"};
inline constexpr std::array<std::string_view, 6> fields = {"entries", "value",   "hint",
                                                           "problem", "enabled", "visible"};
inline constexpr std::array<std::string_view, 7> acts = {"typed",  "entered", "stepped", "added",
                                                         "edited", "removed", "reset"};
// The types of values.
inline constexpr std::string_view boolType = "bool";     ///< 0 or 1
inline constexpr std::string_view numberType = "number"; ///< a whole one
inline constexpr std::string_view textType = "text";
inline constexpr std::string_view listType = "list"; ///< JSON: objects of value, text and removal
inline constexpr std::string_view editType = "edit"; ///< the old text, and in the field after it the new one

/// The name of a case.
template <class E, std::size_t n>
constexpr std::string_view nameOf(const std::array<std::string_view, n>& names, E value) {
    return names.at(static_cast<std::size_t>(value));
}
/// The case of a name; nothing where it is the name of none.
template <class E, std::size_t n>
constexpr std::optional<E> caseOf(const std::array<std::string_view, n>& names, std::string_view name) {
    for (std::size_t i = 0; i < n; ++i)
        if (names[i] == name)
            return static_cast<E>(i);
    return std::nullopt;
}

} // namespace kelpa::wire::view
