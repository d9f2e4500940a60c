#pragma once

#import <AppKit/AppKit.h>

/// A capsule that is filled from its leading end, with a cup riding at the end of the filling.
@interface KelpaProgressBar : NSView
/// Moves to a share of the whole; more than all of it is a full bar.
- (void)setFraction:(CGFloat)fraction;
@end
