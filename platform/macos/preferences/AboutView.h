#pragma once

#import <AppKit/AppKit.h>

#include "platform/ports/PreferencesWindow.h"

/// What the program says of itself: its picture beside name, version, copyright and a link.
@interface KelpaAboutView : NSView
- (instancetype)initWithContent:(const kelpa::AboutContent&)content;
- (void)setCopyright:(const std::string&)line;
@end
