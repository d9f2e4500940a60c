#pragma once

#import <AppKit/AppKit.h>

#include "base/FatalError.h"

namespace kelpa {

/// The shared application. That there is none is a programming error and ends the process.
[[nodiscard]] inline NSApplication* runningApplication() {
    if (!NSApp)
        fatalError("There is no application");
    return NSApp;
}

} // namespace kelpa
