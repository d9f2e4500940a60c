#import "platform/macos/views/TileGrid.h"

#import "platform/macos/Bridge.h"
#import "platform/macos/views/Capsule.h"
#import "platform/macos/views/Labels.h"

#include "platform/ports/Measures.h"

namespace {

constexpr CGFloat tileHeight = kelpa::measures::tileHeight;
constexpr CGFloat tileWidth = 80;
constexpr CGFloat gap = 4;

} // namespace

@implementation KelpaTileGrid {
    NSInteger _columns;
    NSMutableArray<NSButton*>* _tiles;
    KelpaCapsule* _selection;
    std::int64_t _chosenValue;
    NSSize _laidOutSize;
    void (^_chosen)(std::int64_t value);
}

- (instancetype)initWithColumns:(NSInteger)columns chosen:(void (^)(std::int64_t value))chosen {
    self = [super initWithFrame:NSZeroRect];
    if (self) {
        _columns = columns;
        _chosen = [chosen copy];
        _chosenValue = -1;
        _tiles = [NSMutableArray array];
        _selection = [[KelpaCapsule alloc] initWithColor:[NSColor controlAccentColor]];
        [_selection castShadow:kelpa::measures::selectionShadow];
        [_selection setHidden:YES];
        [self addSubview:_selection];
        [self setAccessibilityElement:YES];
        [self setAccessibilityRole:NSAccessibilityRadioGroupRole];
    }
    return self;
}

/// Rows are counted from the top.
- (BOOL)isFlipped {
    return YES;
}

- (void)setEntries:(const std::vector<std::pair<std::int64_t, std::string>>&)entries {
    for (NSButton* tile in _tiles)
        [tile removeFromSuperview];
    [_tiles removeAllObjects];
    for (const auto& [value, text] : entries)
        [self addTile:value text:kelpa::toNSString(text)];
    [self invalidateIntrinsicContentSize];
    _laidOutSize = NSZeroSize;
    [self setNeedsLayout:YES];
    [self choose:_chosenValue];
}

- (void)addTile:(std::int64_t)value text:(NSString*)text {
    NSButton* tile = [NSButton buttonWithTitle:text target:self action:@selector(clicked:)];
    [tile setButtonType:NSButtonTypeMomentaryPushIn];
    [tile setBordered:NO];
    [tile setAccessibilityRole:NSAccessibilityRadioButtonRole];
    [tile setTag:value];
    [self addSubview:tile];
    [_tiles addObject:tile];
}

- (void)choose:(std::int64_t)value {
    NSButton* before = [self tileOf:_chosenValue];
    _chosenValue = value;
    NSButton* now = [self tileOf:value];
    for (NSButton* tile in _tiles)
        [self paint:tile chosen:tile == now];
    [self moveSelectionTo:now animated:before != nil && before != now];
}

- (NSButton*)tileOf:(std::int64_t)value {
    for (NSButton* tile in _tiles)
        if ([tile tag] == value)
            return tile;
    return nil;
}

- (void)paint:(NSButton*)tile chosen:(BOOL)chosen {
    NSColor* color = chosen ? [NSColor alternateSelectedControlTextColor] : [NSColor labelColor];
    NSDictionary* look = kelpa::centredText([tile font], color);
    [tile setAttributedTitle:[[NSAttributedString alloc] initWithString:[tile title] attributes:look]];
    [tile setAccessibilityValue:@(chosen)];
}

- (void)moveSelectionTo:(NSButton*)tile animated:(BOOL)animated {
    [_selection setHidden:tile == nil];
    // Before the grid has a size of its own there is no frame to slide to; the first layout moves the
    // capsule.
    if (!tile || NSIsEmptyRect([self bounds]))
        return;
    const NSRect frame =
        NSInsetRect([self frameOfTile:[_tiles indexOfObject:tile]], 0, kelpa::measures::tileInset);
    KelpaCapsule* selection = _selection;
    [NSAnimationContext
        runAnimationGroup:^(NSAnimationContext* context) {
          [context setDuration:animated ? kelpa::measures::slideSeconds : 0];
          [[selection animator] setFrame:frame];
        }
        completionHandler:nil];
}

- (NSInteger)rows {
    const auto count = static_cast<NSInteger>([_tiles count]);
    return (count + _columns - 1) / _columns;
}

- (NSSize)intrinsicContentSize {
    return NSMakeSize(static_cast<CGFloat>(_columns) * (tileWidth + gap) - gap,
                      static_cast<CGFloat>([self rows]) * tileHeight);
}

/// Of the words in the first row, which stand in the middle of their tiles.
- (CGFloat)firstBaselineOffsetFromTop {
    return (tileHeight + [[NSFont systemFontOfSize:0] capHeight]) / 2;
}

- (NSRect)frameOfTile:(NSUInteger)index {
    const auto columns = static_cast<NSUInteger>(_columns);
    const CGFloat width = (NSWidth([self bounds]) + gap) / static_cast<CGFloat>(_columns);
    return NSMakeRect(static_cast<CGFloat>(index % columns) * width,
                      static_cast<CGFloat>(index / columns) * tileHeight, width - gap, tileHeight);
}

- (void)layout {
    [super layout];
    for (NSUInteger i = 0; i < [_tiles count]; ++i)
        [[_tiles objectAtIndex:i] setFrame:[self frameOfTile:i]];
    // A capsule on its way is left alone, unless the tiles themselves moved.
    if (NSEqualSizes(_laidOutSize, [self bounds].size))
        return;
    _laidOutSize = [self bounds].size;
    [self moveSelectionTo:[self tileOf:_chosenValue] animated:NO];
}

/// What is chosen shows only when the core says so.
- (void)clicked:(id)sender {
    // What it does may take the grid, and with it the block, away.
    void (^const chosen)(std::int64_t) = _chosen;
    chosen([static_cast<NSButton*>(sender) tag]);
}

- (void)setEnabled:(BOOL)enabled {
    for (NSButton* tile in _tiles)
        [tile setEnabled:enabled];
}

@end
