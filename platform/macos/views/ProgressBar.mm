#import "platform/macos/views/ProgressBar.h"

#import "platform/macos/views/Capsule.h"
#import "platform/macos/views/Labels.h"

#include "platform/ports/Measures.h"

namespace {

constexpr CGFloat barHeight = kelpa::measures::barHeight;
constexpr CGFloat trackHeight = kelpa::measures::trackHeight;
constexpr CGFloat cupOffset = 15;

} // namespace

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
