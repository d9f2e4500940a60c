#pragma once

#import <AppKit/AppKit.h>

#include "platform/ports/WindowSystem.h"

/// What fills one of the program's own windows.
@protocol KelpaContent <NSObject>
/// The user wants the window gone without an answer.
- (void)windowWantsToClose;
@end

/// A break window or the water panel. It takes the keyboard, although it may have no title bar, and ignores
/// it for a while after it was shown.
@interface KelpaWindow : NSWindow <NSWindowDelegate>
- (instancetype)initWithSpec:(const kelpa::WindowSpec&)spec;
/// Told where the window is each time a person has dragged it.
@property(nonatomic, copy) void (^dragged)(NSRect frame);
/// Fills the window's content view, which then owns `content`.
- (void)host:(NSView<KelpaContent>*)content;
/// Where the window belongs from now on.
- (void)setPlace:(NSRect)place;
/// Shows the window in front of all others of its level, whichever application is active.
- (void)present;
/// Takes every window that covers a screen back to its place, after the system has moved windows.
+ (void)restorePlaces;
/// The window that the keyboard belongs to after what was shown last, once: nil when it is asked for again.
+ (KelpaWindow*)takePresented;
@end

namespace kelpa {

/// Both count the y axis upwards from the lower left corner of the first screen.
[[nodiscard]] inline NSRect toNSRect(const kelpa::Rect& rect) {
    return NSMakeRect(rect.x, rect.y, rect.width, rect.height);
}

} // namespace kelpa
