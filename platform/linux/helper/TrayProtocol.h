#pragma once

#include <string_view>

/// What the program and `kelpa-tray` say to each other.
namespace kelpa::wire::tray {

// From the program to the tray.
/// data FOLDER: where the program's pictures lie; comes first.
inline constexpr std::string_view data = "data";
/// image NAME: the application image of the icon.
inline constexpr std::string_view image = "image";
/// manager WINDOW: the number of the window that icons are embedded in; 0 while there is none.
inline constexpr std::string_view manager = "manager";
/// title TEXT: beside the icon; empty for none.
inline constexpr std::string_view title = "title";
/// hint TEXT: for the tooltip; empty for none.
inline constexpr std::string_view hint = "hint";
/// insert INDEX ID SEPARATOR ENABLED TITLE IMAGE KEY: a menu line; SEPARATOR and ENABLED are 0 or 1.
inline constexpr std::string_view insert = "insert";
/// change ID SEPARATOR ENABLED TITLE IMAGE KEY
inline constexpr std::string_view change = "change";
/// remove ID
inline constexpr std::string_view remove = "remove";
/// popup: opens the menu at the pointer.
inline constexpr std::string_view popup = "popup";

// From the tray to the program.
/// click ID
inline constexpr std::string_view click = "click";
/// closed: the menu that was opened, after the click if a line was chosen.
inline constexpr std::string_view closed = "closed";
/// warning TEXT: for the log.
inline constexpr std::string_view warning = "warning";

} // namespace kelpa::wire::tray
