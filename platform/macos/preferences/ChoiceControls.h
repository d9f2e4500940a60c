#pragma once

#import "platform/macos/preferences/Control.h"

/// On or off, with its label beside it.
@interface KelpaSwitchControl : KelpaControl
@end

/// A drop-down list.
@interface KelpaPickerControl : KelpaControl
@end

/// Entries side by side.
@interface KelpaSegmentsControl : KelpaControl
@end

/// Entries in a grid.
@interface KelpaTilesControl : KelpaControl
@end
