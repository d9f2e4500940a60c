#pragma once

#import <AppKit/AppKit.h>

#include <functional>

/// Tells when a window comes to the front and when it goes. A window does not own its delegate.
@interface KelpaWindowWatch : NSObject <NSWindowDelegate>
- (instancetype)initWithFront:(std::function<void()>)cameToFront closing:(std::function<void()>)closing;
@end
