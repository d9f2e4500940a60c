#pragma once

#include <functional>

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

} // namespace standin
