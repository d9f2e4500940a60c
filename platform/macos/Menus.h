#pragma once

#import <AppKit/AppKit.h>

/// The target of the status menu's lines. There are no instances of it: the class itself is the target. What
/// a line does is the core's business, which knows it by the line's number in the sender's represented
/// object.
@interface MenuAction : NSObject
/// The line whose click is being dealt with; nil at any other time.
+ (id)sender;
@end

namespace kelpa {

/// The application's main menu. An application without a place in the Dock never shows it, so that its lines
/// have no titles; it is there for the key equivalents of text fields and windows, and because the list of
/// windows needs a menu to be kept in.
void installMainMenu();

} // namespace kelpa
