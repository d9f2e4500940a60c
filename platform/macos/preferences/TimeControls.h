#pragma once

#import "platform/macos/preferences/Control.h"

/// Hour and minute, in the user's own way of writing them.
@interface KelpaTimeControl : KelpaControl
@end

/// A grid of times of day, each with its remove button, and a last tile that adds one.
@interface KelpaTimePointsControl : KelpaControl <NSPopoverDelegate>
@end
