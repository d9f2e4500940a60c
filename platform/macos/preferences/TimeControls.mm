#import "platform/macos/preferences/TimeControls.h"

#import "platform/macos/Bridge.h"
#import "platform/macos/views/Capsule.h"
#import "platform/macos/views/Labels.h"

#include "platform/ports/Measures.h"

#include <algorithm>

namespace {

constexpr CGFloat spacing = 8;
constexpr CGFloat tilePadding = 8;
constexpr CGFloat pickerWidth = 80;
constexpr CGFloat pickerPadding = 8;
constexpr std::size_t tilesInRow = 4;
constexpr NSCalendarUnit hourAndMinute = NSCalendarUnitHour | NSCalendarUnitMinute;

NSDatePicker* makePicker() {
    NSDatePicker* picker = [[NSDatePicker alloc] initWithFrame:NSZeroRect];
    [picker setDatePickerStyle:NSDatePickerStyleTextFieldAndStepper];
    [picker setDatePickerElements:NSDatePickerElementFlagHourMinute];
    return picker;
}

/// The picker keeps whole dates; the day of this one means nothing.
NSDate* dateOf(int hour, int minute) {
    NSDateComponents* components = [[NSDateComponents alloc] init];
    [components setYear:2001];
    [components setMonth:1];
    [components setDay:1];
    [components setHour:hour];
    [components setMinute:minute];
    return [[NSCalendar currentCalendar] dateFromComponents:components];
}

struct TimeOfDay {
    int hour = 0;
    int minute = 0;
};

TimeOfDay timeOf(NSDatePicker* picker) {
    NSDateComponents* components = [[NSCalendar currentCalendar] components:hourAndMinute
                                                                   fromDate:[picker dateValue]];
    return {static_cast<int>([components hour]), static_cast<int>([components minute])};
}

} // namespace

@implementation KelpaTimeControl {
    NSDatePicker* _picker;
}

- (NSArray<NSView*>*)makeViews:(const kelpa::PreferencesControl&)control
                        layout:(const kelpa::PreferencesLayout&)layout {
    (void)layout;
    _picker = makePicker();
    [_picker setTarget:self];
    [_picker setAction:@selector(entered:)];
    [_picker setAccessibilityLabel:kelpa::toNSString(control.label)];
    return @[ _picker ];
}

- (void)setHour:(int)hour minute:(int)minute {
    [_picker setDateValue:dateOf(hour, minute)];
}

- (void)entered:(id)sender {
    (void)sender;
    const TimeOfDay time = timeOf(_picker);
    kelpa::callCore([&] { [self client].timeEntered([self name], time.hour, time.minute); });
}

@end

/// A time on a capsule, and the button that removes it.
@interface KelpaTimeTile : KelpaCapsule
- (instancetype)initWithPoint:(const kelpa::TimePoint&)point
                       remove:(const kelpa::SymbolButton&)remove
                      removed:(void (^)(void))removed;
@end

@implementation KelpaTimeTile {
    void (^_removed)(void);
}

- (instancetype)initWithPoint:(const kelpa::TimePoint&)point
                       remove:(const kelpa::SymbolButton&)remove
                      removed:(void (^)(void))removed {
    self = [super initWithColor:[NSColor controlBackgroundColor]];
    if (self) {
        _removed = [removed copy];
        [self castShadow:kelpa::measures::selectionShadow];
        NSString* name = kelpa::toNSString(remove.name);
        NSImage* cross = [NSImage imageWithSystemSymbolName:kelpa::toNSString(remove.symbol)
                                   accessibilityDescription:name];
        NSButton* button = [NSButton buttonWithImage:cross target:self action:@selector(clicked:)];
        [button setBordered:NO];
        // Which of the times it removes is said with the button, because each tile has one.
        [button setAccessibilityLabel:[name stringByAppendingFormat:@" %@", kelpa::toNSString(point.text)]];
        [self fillWith:kelpa::makeLabel(point.text, [NSFont systemFontOfSize:0], [NSColor labelColor])
                button:button];
    }
    return self;
}

- (void)fillWith:(NSTextField*)label button:(NSButton*)button {
    NSStackView* row = [NSStackView stackViewWithViews:@[ label, button ]];
    [row setSpacing:spacing / 2];
    [row setEdgeInsets:NSEdgeInsetsMake(tilePadding / 2, tilePadding, tilePadding / 2, tilePadding)];
    [row setTranslatesAutoresizingMaskIntoConstraints:NO];
    [self addSubview:row];
    [NSLayoutConstraint activateConstraints:@[
        [[row leadingAnchor] constraintEqualToAnchor:[self leadingAnchor]],
        [[row trailingAnchor] constraintEqualToAnchor:[self trailingAnchor]],
        [[row topAnchor] constraintEqualToAnchor:[self topAnchor]],
        [[row bottomAnchor] constraintEqualToAnchor:[self bottomAnchor]],
    ]];
}

- (void)clicked:(id)sender {
    (void)sender;
    // The tile goes with its time, and the block with it.
    void (^const removed)(void) = _removed;
    removed();
}

@end

namespace {

/// A capsule around the button that adds a time.
KelpaCapsule* makePlusTile(NSButton* plus) {
    KelpaCapsule* tile = [[KelpaCapsule alloc] initWithColor:[NSColor controlBackgroundColor]];
    [tile castShadow:kelpa::measures::selectionShadow];
    [plus setTranslatesAutoresizingMaskIntoConstraints:NO];
    [tile addSubview:plus];
    [NSLayoutConstraint activateConstraints:@[
        [[plus leadingAnchor] constraintEqualToAnchor:[tile leadingAnchor] constant:tilePadding],
        [[plus trailingAnchor] constraintEqualToAnchor:[tile trailingAnchor] constant:-tilePadding],
        [[plus topAnchor] constraintEqualToAnchor:[tile topAnchor] constant:tilePadding],
        [[plus bottomAnchor] constraintEqualToAnchor:[tile bottomAnchor] constant:-tilePadding],
    ]];
    return tile;
}

} // namespace

@implementation KelpaTimePointsControl {
    NSStackView* _rows;
    NSButton* _plus;
    KelpaCapsule* _plusTile;
    kelpa::SymbolButton _remove;
    NSDatePicker* _newTime;
    NSPopover* _popover;
    TimeOfDay _proposed;
}

- (NSArray<NSView*>*)makeViews:(const kelpa::PreferencesControl&)control
                        layout:(const kelpa::PreferencesLayout&)layout {
    _remove = layout.removeTimePoint;
    NSString* addName = kelpa::toNSString(layout.addTimePoint.name);
    NSImage* plus = [NSImage imageWithSystemSymbolName:kelpa::toNSString(layout.addTimePoint.symbol)
                              accessibilityDescription:addName];
    _plus = [NSButton buttonWithImage:plus target:self action:@selector(plusClicked:)];
    [_plus setBordered:NO];
    [_plus setAccessibilityLabel:addName];
    _plusTile = makePlusTile(_plus);
    _rows = [[NSStackView alloc] initWithFrame:NSZeroRect];
    [_rows setOrientation:NSUserInterfaceLayoutOrientationVertical];
    [_rows setAlignment:NSLayoutAttributeLeading];
    [_rows setSpacing:spacing];
    [_rows setAccessibilityLabel:kelpa::toNSString(control.label)];
    [self showTiles:@[ _plusTile ]];
    return @[ _rows ];
}

- (void)setTimePoints:(const std::vector<kelpa::TimePoint>&)points {
    NSMutableArray* tiles = [NSMutableArray array];
    for (const kelpa::TimePoint& point : points)
        [tiles addObject:[self tileOf:point]];
    [tiles addObject:_plusTile];
    [self showTiles:tiles];
}

- (KelpaTimeTile*)tileOf:(const kelpa::TimePoint&)point {
    __weak KelpaTimePointsControl* weakSelf = self;
    const TimeOfDay time{point.hour, point.minute};
    return [[KelpaTimeTile alloc] initWithPoint:point
                                         remove:_remove
                                        removed:^{
                                          [weakSelf removeHour:time.hour minute:time.minute];
                                        }];
}

- (void)showTiles:(NSArray<NSView*>*)tiles {
    for (NSView* row in [_rows arrangedSubviews])
        [row removeFromSuperview];
    for (NSUInteger i = 0; i < [tiles count]; i += tilesInRow) {
        const NSUInteger length = std::min<NSUInteger>(tilesInRow, [tiles count] - i);
        NSStackView* row = [NSStackView stackViewWithViews:[tiles subarrayWithRange:NSMakeRange(i, length)]];
        [row setSpacing:spacing];
        [_rows addArrangedSubview:row];
    }
}

- (void)removeHour:(int)hour minute:(int)minute {
    kelpa::callCore([&] { [self client].timePointRemoved([self name], hour, minute); });
}

- (void)setHour:(int)hour minute:(int)minute {
    _proposed = {hour, minute};
}

- (void)plusClicked:(id)sender {
    (void)sender;
    // Still on its way out, with a time that is yet to be taken.
    if (_popover)
        return;
    _newTime = makePicker();
    [_newTime setDateValue:dateOf(_proposed.hour, _proposed.minute)];
    [_newTime setAccessibilityLabel:[_plus accessibilityLabel]];
    NSViewController* content = [[NSViewController alloc] init];
    [content setView:[self popoverContent]];
    _popover = [[NSPopover alloc] init];
    [_popover setBehavior:NSPopoverBehaviorTransient];
    [_popover setContentViewController:content];
    [_popover setDelegate:self];
    [_popover showRelativeToRect:[_plus bounds] ofView:_plus preferredEdge:NSRectEdgeMaxY];
}

- (NSView*)popoverContent {
    NSStackView* frame = [NSStackView stackViewWithViews:@[ _newTime ]];
    [frame setEdgeInsets:NSEdgeInsetsMake(pickerPadding, pickerPadding, pickerPadding, pickerPadding)];
    [[[_newTime widthAnchor] constraintGreaterThanOrEqualToConstant:pickerWidth] setActive:YES];
    // The popover takes the size that its content has when it is given it.
    [frame setFrameSize:[frame fittingSize]];
    return frame;
}

/// The time is taken when the popover closes.
- (void)popoverDidClose:(NSNotification*)notification {
    (void)notification;
    const TimeOfDay time = timeOf(_newTime);
    _popover = nil;
    kelpa::callCore([&] { [self client].timePointAdded([self name], time.hour, time.minute); });
}

- (void)setEnabled:(BOOL)enabled {
    [_plus setEnabled:enabled];
}

@end
