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
