#pragma once

#import "platform/macos/check/driver/Commands.h"

#include "platform/macos/check/runtime/Objects.h"

#include <functional>
#include <utility>

/// Notes what the program asked of the system: what it was, and with what.
void note(NSString* what, NSDictionary* with);

@interface NSView (Layout)
/// Lays out a view and all that is within it.
- (void)layOutAll;
@end

namespace standin {

/// When something is due, and a number, to call it off with.
using Ticket = std::pair<double, unsigned long>;
/// Does the work once so many seconds have passed, on the main thread.
Ticket schedule(double seconds, std::function<void()> work);
void callOff(const Ticket& ticket);
/// Lets seconds pass and does what falls due, in order.
void pass(double seconds);

} // namespace standin
