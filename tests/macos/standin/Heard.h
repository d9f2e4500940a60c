#pragma once

#import <Foundation/Foundation.h>

/// Notes what the program asked of the system: what it was, and with what.
void note(NSString* what, NSDictionary* with);
/// All that was noted since the last time, in order.
[[nodiscard]] NSArray* takeNotes();
