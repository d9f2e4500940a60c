#pragma once

#import <AppKit/AppKit.h>

#include <string>

/// A capsule that is filled from its leading end, with a symbol riding at the end of the filling.
@interface KelpaProgressBar : NSView
/// The name of the symbol.
- (void)setSymbol:(const std::string&)name;
/// Moves to a share of the whole, from 0 to 1.
- (void)setFraction:(CGFloat)fraction;
@end
