#pragma once

#import "platform/macos/preferences/Control.h"

/// One line of text.
@interface KelpaTextControl : KelpaControl <NSTextFieldDelegate>
@end

/// A field of digits in which a number goes up and down by steps.
@interface KelpaStepsControl : KelpaTextControl
@end

/// With a stepper behind it.
@interface KelpaNumberControl : KelpaStepsControl
@end

/// Between a minus and a plus button.
@interface KelpaAccumulatorControl : KelpaStepsControl
@end
