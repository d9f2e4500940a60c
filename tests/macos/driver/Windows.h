#pragma once

#import <AppKit/AppKit.h>

// What can be seen.
namespace driver {

/// The windows on the screen, each with all its views.
id windows(NSDictionary* asked);
/// What the menu bar shows beside the picture.
id title(NSDictionary* asked);
/// The lines of the menu there.
id menu(NSDictionary* asked);
/// The names of the actions of its lines that their targets do not have.
id lackingActions(NSDictionary* asked);

/// The view that `windows` gave this number, as long as it is there.
NSView* viewNumbered(NSNumber* number);
NSWindow* windowNumbered(NSNumber* number);
NSError* problem(NSString* text);

} // namespace driver
