#pragma once

#import <AppKit/AppKit.h>

/// The person in front of the program. Each command is a method of the class, in a category of its file: it
/// takes what was asked, gives the answer or nil, and throws why a person could not do it. Over GNUstep the
/// stand-ins are the system around the program, and add commands of their own; on a Mac that is AppKit, and
/// Mac.mm says what has to be said of it. Either of them also lets the application tell of its "statusItem".
@interface Driver : NSObject
@end

namespace driver {

/// Deals with all events that are there until a moment.
void dealWithEvents(NSDate* end);
/// Lets seconds pass, and does all that is to be done by then.
void pass(double seconds);

} // namespace driver
