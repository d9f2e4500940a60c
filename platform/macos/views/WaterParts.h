#pragma once

#import <AppKit/AppKit.h>

#include <string>

/// A small caption above a large figure, which becomes a little smaller where it has no room.
@interface KelpaWaterFigure : NSStackView
- (instancetype)initWithStyle:(NSFontTextStyle)style color:(NSColor*)color;
/// The room for the figure in points.
- (void)setRoom:(CGFloat)width;
- (void)setCaption:(const std::string&)caption;
- (void)setFigure:(const std::string&)figure;
@end

/// A capsule that is filled from its leading end, with a symbol riding at the end of the filling.
@interface KelpaProgressBar : NSView
/// The name of the symbol.
- (void)setSymbol:(const std::string&)name;
/// Moves to a share of the whole, from 0 to 1.
- (void)setFraction:(CGFloat)fraction;
@end
