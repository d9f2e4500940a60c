#import "platform/macos/preferences/TimeControls.h"

#import "platform/macos/Bridge.h"
#import "platform/macos/preferences/TimeTile.h"

#include <algorithm>

namespace {

constexpr CGFloat spacing = 8;
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

/// A time that is shown already is left alone: the picker would take a new one for the end of what is being
/// typed, and the second digit of an hour for another hour.
- (void)setHour:(int)hour minute:(int)minute {
    const TimeOfDay shown = timeOf(_picker);
    if (shown.hour != hour || shown.minute != minute)
        [_picker setDateValue:dateOf(hour, minute)];
}

- (void)entered:(id)sender {
    (void)sender;
    const TimeOfDay time = timeOf(_picker);
    kelpa::callCore([&] { [self client].timeEntered([self name], time.hour, time.minute); });
}

@end

@implementation KelpaTimePointsControl {
    NSStackView* _rows;
    NSButton* _plus;
    NSView* _plusTile;
    NSString* _removalSymbol;
    NSDatePicker* _newTime;
    NSPopover* _popover;
    TimeOfDay _proposed;
}

- (NSArray<NSView*>*)makeViews:(const kelpa::PreferencesControl&)control
                        layout:(const kelpa::PreferencesLayout&)layout {
    _removalSymbol = kelpa::toNSString(layout.removalSymbol);
    NSString* addName = kelpa::toNSString(layout.addTimePoint.name);
    NSImage* plus = [NSImage imageWithSystemSymbolName:kelpa::toNSString(layout.addTimePoint.symbol)
                              accessibilityDescription:addName];
    _plus = [NSButton buttonWithImage:plus target:self action:@selector(plusClicked:)];
    [_plus setBordered:NO];
    [_plus setAccessibilityLabel:addName];
    _plusTile = kelpa::makePlusTile(_plus);
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
                                         symbol:_removalSymbol
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
        [row setAlignment:NSLayoutAttributeBottom];
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
