#pragma once

#import <AppKit/AppKit.h>

namespace standin {

/// The screens from now on, each a list: number, x, y, width, height. The first one is the main screen.
void setScreens(NSArray* screens);
/// As when a person clicks somewhere else.
void clickBesidePopovers();
/// What stands in the menu bar; nil before there is anything.
[[nodiscard]] NSButton* statusButton();
[[nodiscard]] NSMenu* statusMenu();
/// Hands an event to whoever watches those of other applications.
void happenElsewhere(NSEvent* event);
/// Whether the macOS that is played is at least `needed`, as in "macOS 13.0".
[[nodiscard]] bool systemIs(const char* needed);

} // namespace standin
