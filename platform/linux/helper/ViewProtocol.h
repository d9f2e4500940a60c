#pragma once

#include <array>
#include <cstddef>
#include <string_view>

/// What the program and `kelpa-view` say to each other. A window is known by a number that the program gives;
/// lines that begin with one go between the window here and the window there.
namespace kelpa::wire::view {

// From the program to the view.
/// open WINDOW KIND TITLE X Y WIDTH HEIGHT SCREEN: makes a hidden window, in pixels of the desktop, on the
/// screen of that connector name; for a window that is there, gives it this title and place. A window of the
/// window manager's is told where `closed` said that it was, or without a size stands in the middle of that
/// screen.
inline constexpr std::string_view open = "open";
/// drop WINDOW: it never comes back.
inline constexpr std::string_view drop = "drop";
/// activate: the keyboard belongs to the windows that are shown.
inline constexpr std::string_view activate = "activate";
/// deactivate: the keyboard is given back.
inline constexpr std::string_view deactivate = "deactivate";

// From a window of the program to that of the view.
/// WINDOW set PROPERTY VALUE: a property of the window's content.
inline constexpr std::string_view set = "set";
/// WINDOW tell CONTROL FIELD TYPE VALUE: what a control of the preferences shows.
inline constexpr std::string_view tell = "tell";
/// WINDOW show: in front of everything.
inline constexpr std::string_view show = "show";
/// WINDOW hide
inline constexpr std::string_view hide = "hide";
/// WINDOW alpha OPACITY: from 0 to 1, at once.
inline constexpr std::string_view alpha = "alpha";
/// WINDOW fade OPACITY SECONDS: from what is seen now.
inline constexpr std::string_view fade = "fade";

// From a window of the view to that of the program.
/// WINDOW action NAME VALUE: what a person did in the window's content; the value may be empty.
inline constexpr std::string_view action = "action";
/// WINDOW did CONTROL ACT TYPE VALUE [TEXT]: what a person did to a control of the preferences.
inline constexpr std::string_view did = "did";
/// WINDOW dragged X Y: a person dragged the window, whose upper left corner is there now, as in `open`.
inline constexpr std::string_view dragged = "dragged";
/// WINDOW closed X Y WIDTH HEIGHT: a person closed a window of the window manager's, which was there, in the
/// toolkit's units.
inline constexpr std::string_view closed = "closed";

// From the view to the program.
/// ready: it has started well.
inline constexpr std::string_view ready = "ready";
/// input: a person uses mouse or keyboard in a window; five times a second at most, and only where the
/// display server does not tell the program itself.
inline constexpr std::string_view input = "input";
/// warning TEXT: for the log.
inline constexpr std::string_view warning = "warning";

/// Bytes of a text that somebody stored: more than a window can show, and far less than a line can carry. Of
/// a longer one the beginning is shown.
inline constexpr std::size_t longestText = 16384;

// Kinds of windows. What the page of a kind shows are properties of its root item; what is told of it are the
// page's actions. Each side names them once: here the face that sets and hears them, there the page.
inline constexpr std::string_view breakKind = "break";
inline constexpr std::string_view waterKind = "water";
inline constexpr std::string_view aboutKind = "about";
inline constexpr std::string_view updateKind = "update";
inline constexpr std::string_view preferencesKind = "preferences";
inline constexpr std::string_view historyKind = "history";
/// What `closed` is as an action.
inline constexpr std::string_view closedAction = "closed";

/// Everything that never changes, as JSON.
inline constexpr std::string_view layout = "layout";
/// The place of the pane that shows.
inline constexpr std::string_view currentPane = "current";
/// The same, which a person turned to.
inline constexpr std::string_view turnedAction = "turned";
/// The window has the keyboard again.
inline constexpr std::string_view cameToFrontAction = "cameToFront";
/// The names of the cases of `PreferencesField` and `PreferencesAct`, in their order.
inline constexpr std::array<std::string_view, 6> fields = {"entries", "value",   "hint",
                                                           "problem", "enabled", "visible"};
inline constexpr std::array<std::string_view, 8> acts = {"typed",  "entered", "stepped", "added",
                                                         "edited", "removed", "reset",   "pressed"};
// The types of values.
inline constexpr std::string_view boolType = "bool";     ///< 0 or 1
inline constexpr std::string_view numberType = "number"; ///< a whole one
inline constexpr std::string_view textType = "text";
inline constexpr std::string_view listType = "list"; ///< JSON: objects of value, text and removal
inline constexpr std::string_view editType = "edit"; ///< the old text, and in the field after it the new one

} // namespace kelpa::wire::view
