#pragma once

#import <AppKit/AppKit.h>

// The driver is the person in front of the program. Over GNUstep the stand-ins are the system around it, and
// add commands of their own; on a Mac that is AppKit, and Mac.mm says what has to be said of it.
namespace driver {

/// Does what is asked. Gives the answer, nil, or an NSError that says why it could not be done.
using Command = id (*)(NSDictionary* asked);

/// Makes a command known by its name, before the program starts.
struct Registration {
    Registration(const char* name, Command command);
};

[[nodiscard]] NSError* problem(NSString* text);
/// The view that `windows` gave this number, nil when it is there no more.
[[nodiscard]] NSView* viewNumbered(NSNumber* number);
[[nodiscard]] NSWindow* windowNumbered(NSNumber* number);

// What the system around says or does.

/// What stands in the menu bar; nil before there is anything.
[[nodiscard]] NSStatusItem* statusItem();
/// The name of the system's symbol that a picture is; nil of another one.
[[nodiscard]] NSString* symbolOf(NSImage* picture);
/// Lets seconds pass, and does all that is to be done by then.
void pass(double seconds);
/// Types a digit into the hour of a time. Nothing or an NSError.
[[nodiscard]] NSError* typeHour(NSDatePicker* picker, NSInteger digit);

} // namespace driver
