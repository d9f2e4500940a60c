#pragma once

#import "platform/macos/preferences/Control.h"

/// A scrolling list of texts to add to, edit in place, delete from and reset.
@interface KelpaPromptsControl
    : KelpaControl <NSTableViewDataSource, NSTableViewDelegate, NSTextFieldDelegate>
@end
