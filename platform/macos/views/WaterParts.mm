#import "platform/macos/views/WaterParts.h"

#import "platform/macos/Bridge.h"
#import "platform/macos/views/Capsule.h"
#import "platform/macos/views/Labels.h"
#import "platform/macos/views/Layout.h"

#include "platform/ports/Measures.h"

#include <algorithm>

namespace {

constexpr CGFloat barHeight = kelpa::measures::barHeight;
constexpr CGFloat trackHeight = kelpa::measures::trackHeight;
constexpr CGFloat cupOffset = 15;

} // namespace

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
        _caption = kelpa::makeLabel("", [NSFont systemFontOfSize:kelpa::measures::captionSize]);
        _figure = kelpa::makeLabel("", _font, color);
        kelpa::asColumn(self, NSLayoutAttributeCenterX, 0);
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

@implementation KelpaProgressBar {
    KelpaCapsule* _track;
    KelpaCapsule* _fill;
    NSImageView* _cup;
    CGFloat _fraction;
    NSSize _laidOutSize;
}

- (instancetype)initWithFrame:(NSRect)frame {
    self = [super initWithFrame:frame];
    if (self) {
        _track = [[KelpaCapsule alloc] initWithColor:[NSColor quaternaryLabelColor]];
        _fill = [[KelpaCapsule alloc] initWithColor:[NSColor systemBlueColor]];
        _cup = [[NSImageView alloc] initWithFrame:NSZeroRect];
        for (NSView* part in @[ _track, _fill, _cup ])
            [self addSubview:part];
        // The figures above say the same in words.
        [self setAccessibilityElement:NO];
        [_cup setAccessibilityElement:NO];
    }
    return self;
}

- (void)setSymbol:(const std::string&)name {
    [_cup setImage:kelpa::symbolImage(name, kelpa::measures::cupSize)];
}

- (NSSize)intrinsicContentSize {
    return NSMakeSize(NSViewNoIntrinsicMetric, barHeight);
}

- (void)setFraction:(CGFloat)fraction {
    _fraction = fraction;
    [self placeIn:kelpa::measures::barSeconds];
}

- (void)placeIn:(NSTimeInterval)seconds {
    const CGFloat end = NSWidth([self bounds]) * _fraction;
    const CGFloat middle = NSMidY([self bounds]);
    NSView* fill = _fill;
    NSView* cup = _cup;
    [NSAnimationContext
        runAnimationGroup:^(NSAnimationContext* context) {
          [context setDuration:seconds];
          [[fill animator] setFrame:NSMakeRect(0, middle - trackHeight / 2, end, trackHeight)];
          [[cup animator] setFrame:NSMakeRect(end - cupOffset, middle - barHeight / 2, barHeight, barHeight)];
        }
        completionHandler:nil];
}

- (void)layout {
    [super layout];
    if (NSEqualSizes(_laidOutSize, [self bounds].size))
        return;
    _laidOutSize = [self bounds].size;
    [_track
        setFrame:NSMakeRect(0, NSMidY([self bounds]) - trackHeight / 2, NSWidth([self bounds]), trackHeight)];
    [self placeIn:0];
}

@end
