#pragma once

#import <AppKit/AppKit.h>

#include <functional>

/// Notes what the program asked of the system: what it was, and with what.
void note(NSString* what, NSDictionary* with);
/// All that was noted since the last time, in order.
[[nodiscard]] NSArray* takeNotes();
/// Lays a view out and all within it.
void layOutWithin(NSView* view);

namespace standin {

/// Seconds since the program started, on a clock that only tests move on.
[[nodiscard]] double now();
/// Does the work once the clock says `due`, on the main thread. Work that is not `common` waits while a menu
/// is open. Gives a number to call it off with.
unsigned long schedule(double due, bool common, std::function<void()> work);
void callOff(unsigned long number);
/// Lets seconds pass and does what falls due, in order; each time until nothing is left to do.
void pass(double seconds);
void setMenuOpen(bool open);
/// Does all that waits in queues, those of other threads included.
void settleQueues();

/// The screens from now on, each a list: number, x, y, width, height. The first one is the main screen.
void setScreens(NSArray* screens);
/// As when a person clicks somewhere else.
void clickBesidePopovers();
/// What stands in the menu bar; nil before there is anything.
[[nodiscard]] NSButton* statusButton();
[[nodiscard]] NSMenu* statusMenu();
/// Hands an event to whoever watches those of other applications.
void happenElsewhere(NSEvent* event);

} // namespace standin
