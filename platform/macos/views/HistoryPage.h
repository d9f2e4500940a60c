#pragma once

#import <AppKit/AppKit.h>

#include "platform/ports/HistoryWindow.h"

/// What fills the window of the history: charts one below the other, the figures of one column, and the
/// button that forgets everything after a question.
@interface KelpaHistoryPage : NSView
/// `client` must outlive the view.
- (instancetype)initWithTexts:(const kelpa::HistoryTexts&)texts client:(kelpa::HistoryWindowClient&)client;
- (void)setPicture:(const kelpa::HistoryPicture&)picture;
@end
