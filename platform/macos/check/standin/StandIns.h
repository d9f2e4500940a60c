#pragma once

#import "platform/macos/check/driver/Commands.h"

#include "platform/macos/check/runtime/Objects.h"

/// Notes what the program asked of the system: what it was, and with what.
void note(NSString* what, NSDictionary* with);

@interface NSView (Layout)
/// Lays out a view and all that is within it.
- (void)layOutAll;
@end
