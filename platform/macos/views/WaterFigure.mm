#import "platform/macos/views/WaterFigure.h"

#import "platform/macos/Bridge.h"
#import "platform/macos/views/Labels.h"

#include "platform/ports/Measures.h"

#include <algorithm>

@implementation KelpaWaterFigure {
    NSTextField* _caption;
    NSTextField* _figure;
    NSFont* _font;
    CGFloat _room;
}

- (instancetype)initWithStyle:(NSFontTextStyle)style color:(NSColor*)color {
    self = [super initWithFrame:NSZeroRect];
    if (self) {
        _font = kelpa::boldFont(style);
        _caption = kelpa::makeLabel("", [NSFont systemFontOfSize:kelpa::measures::captionSize],
                                    [NSColor labelColor]);
        _figure = kelpa::makeLabel("", _font, color);
        [self setOrientation:NSUserInterfaceLayoutOrientationVertical];
        [self setAlignment:NSLayoutAttributeCenterX];
        [self setSpacing:0];
        [self addArrangedSubview:_caption];
        [self addArrangedSubview:_figure];
    }
    return self;
}

- (void)setRoom:(CGFloat)width {
    _room = width;
}

- (void)setCaption:(const std::string&)caption {
    [_caption setStringValue:kelpa::toNSString(caption)];
}

- (void)setFigure:(const std::string&)figure {
    NSString* text = kelpa::toNSString(figure);
    const CGFloat width = [text sizeWithAttributes:@{NSFontAttributeName : _font}].width;
    const CGFloat scale = std::clamp(_room / std::max<CGFloat>(width, 1), kelpa::measures::figureShrink, 1.0);
    [_figure setFont:[NSFont boldSystemFontOfSize:[_font pointSize] * scale]];
    [_figure setStringValue:text];
}

@end
