#pragma once

#import <AppKit/AppKit.h>

#include "platform/ports/PreferencesWindow.h"

/// A time on a capsule, with the button that removes it over the capsule's corner.
@interface KelpaTimeTile : NSView
/// `symbol` is the button's; `removed` runs on a click and must not own the tile.
- (instancetype)initWithPoint:(const kelpa::PreferencesEntry&)point
                       symbol:(NSString*)symbol
                      removed:(void (^)(void))removed;
@end

namespace kelpa {

/// A capsule around the button that adds a time.
[[nodiscard]] NSView* makePlusTile(NSButton* plus);

} // namespace kelpa
