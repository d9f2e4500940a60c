#pragma once

#import "platform/macos/preferences/Control.h"

/// One line of text.
@interface KelpaTextControl : KelpaControl <NSTextFieldDelegate>
@end

/// A field of digits with a stepper.
@interface KelpaNumberControl : KelpaTextControl
@end

/// A minus button, a field of digits, a plus button.
@interface KelpaAccumulatorControl : KelpaTextControl
@end
