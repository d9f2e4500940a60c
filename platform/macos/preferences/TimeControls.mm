#import "platform/macos/preferences/Control.h"

#import "platform/macos/Bridge.h"
#import "platform/macos/views/Capsule.h"
#import "platform/macos/views/Labels.h"
#import "platform/macos/views/Layout.h"

#include "platform/ports/Measures.h"

#include <algorithm>

namespace {

constexpr CGFloat spacing = 8;
constexpr CGFloat pickerWidth = 80;
constexpr CGFloat pickerPadding = 8;
constexpr std::size_t tilesInRow = 4;
constexpr CGFloat tilePadding = 8;
constexpr CGFloat capsuleOpacity = 0.8;
/// How far the button stands out of the capsule.
constexpr CGFloat overhang = 6;
constexpr NSCalendarUnit hourAndMinute = NSCalendarUnitHour | NSCalendarUnitMinute;

NSDatePicker* makePicker() {
    NSDatePicker* picker = [[NSDatePicker alloc] initWithFrame:NSZeroRect];
    [picker setDatePickerStyle:NSDatePickerStyleTextFieldAndStepper];
    [picker setDatePickerElements:NSDatePickerElementFlagHourMinute];
    return picker;
}

/// The picker keeps whole dates; the day of this one means nothing.
NSDate* dateOf(std::int64_t minutes) {
    NSDateComponents* components = [[NSDateComponents alloc] init];
    [components setYear:2001];
    [components setMonth:1];
    [components setDay:1];
    [components setHour:static_cast<NSInteger>(minutes / 60)];
    [components setMinute:static_cast<NSInteger>(minutes % 60)];
    return [[NSCalendar currentCalendar] dateFromComponents:components];
}

/// The minutes since midnight.
std::int64_t minutesOf(NSDatePicker* picker) {
    NSDateComponents* components = [[NSCalendar currentCalendar] components:hourAndMinute
                                                                   fromDate:[picker dateValue]];
    return std::int64_t{60} * [components hour] + [components minute];
}

KelpaCapsule* makeCapsule() {
    KelpaCapsule* capsule = [[KelpaCapsule alloc] initWithColor:[NSColor controlBackgroundColor]];
    [capsule castShadow:kelpa::measures::selectionShadow];
    [capsule setAlphaValue:capsuleOpacity];
    return capsule;
}

/// A capsule around the button that adds a time.
NSView* makePlusTile(NSButton* plus) {
    NSView* tile = [[NSView alloc] initWithFrame:NSZeroRect];
    KelpaCapsule* capsule = makeCapsule();
    kelpa::add(@[ capsule, plus ], tile);
    kelpa::surround(plus, capsule, {tilePadding, tilePadding, tilePadding, tilePadding});
    kelpa::surround(capsule, tile);
    return tile;
}

/// A time on a capsule, with the button that removes it over the capsule's corner. `symbol` is the button's;
/// `removed` runs on a click and must not own the tile.
NSView* makeTimeTile(const kelpa::PreferencesEntry& point, NSString* symbol, void (^removed)(void)) {
    NSString* name = kelpa::toNSString(point.removal);
    NSImage* cross = [NSImage imageWithSystemSymbolName:symbol accessibilityDescription:name];
    KelpaActionButton* button = [KelpaActionButton buttonWithImage:cross target:nil action:nullptr];
    [button onClick:removed];
    [button setBordered:NO];
    [button setAccessibilityLabel:name];
    NSTextField* label = kelpa::makeLabel(point.text);
    KelpaCapsule* capsule = makeCapsule();
    NSView* tile = [[NSView alloc] initWithFrame:NSZeroRect];
    kelpa::add(@[ capsule, label, button ], tile);
    kelpa::surround(label, capsule, {tilePadding, 2 * tilePadding, tilePadding, 2 * tilePadding});
    // A view hears of clicks only within its parent, so that the tile is as large as both together.
    kelpa::surround(capsule, tile, {overhang, 0, 0, overhang});
    [[[button topAnchor] constraintEqualToAnchor:[tile topAnchor]] setActive:YES];
    [[[button trailingAnchor] constraintEqualToAnchor:[tile trailingAnchor]] setActive:YES];
    return tile;
}

} // namespace

@implementation KelpaTimeControl {
    NSDatePicker* _picker;
}

- (NSArray<NSView*>*)makeViews:(const kelpa::PreferencesControl&)control in:(const kelpa::FormContext&)form {
    _picker = makePicker();
    [self wire:_picker action:@selector(entered:) as:control];
    return @[ _picker ];
}

/// A time that is shown already is left alone: the picker would take a new one for the end of what is being
/// typed, and the second digit of an hour for another hour.
- (void)showValue:(const kelpa::PreferencesValue&)value {
    const auto minutes = std::get<std::int64_t>(value);
    if (minutesOf(_picker) != minutes)
        [_picker setDateValue:dateOf(minutes)];
}

- (void)entered:(id)sender {
    [self did:kelpa::PreferencesAct::Entered value:minutesOf(_picker)];
}

@end

@implementation KelpaTimePointsControl {
    NSStackView* _rows;
    NSButton* _plus;
    NSView* _plusTile;
    NSString* _removalSymbol;
    NSDatePicker* _newTime;
    NSPopover* _popover;
    std::int64_t _proposed; // minutes since midnight
}

- (NSArray<NSView*>*)makeViews:(const kelpa::PreferencesControl&)control in:(const kelpa::FormContext&)form {
    _removalSymbol = kelpa::toNSString(form.layout.removalSymbol);
    _plus = [self makeButton:form.layout.addTimePoint action:@selector(plusClicked:)];
    [_plus setBordered:NO];
    [_plus setAccessibilityLabel:kelpa::toNSString(form.layout.addTimePoint.name)];
    _plusTile = makePlusTile(_plus);
    _rows = [[NSStackView alloc] initWithFrame:NSZeroRect];
    kelpa::asColumn(_rows, NSLayoutAttributeLeading, spacing);
    [_rows setAccessibilityLabel:kelpa::toNSString(control.label)];
    [self showTiles:@[ _plusTile ]];
    return @[ _rows ];
}

- (void)showEntries:(const std::vector<kelpa::PreferencesEntry>&)entries {
    NSMutableArray* tiles = [NSMutableArray array];
    for (const kelpa::PreferencesEntry& point : entries)
        [tiles addObject:[self tileOf:point]];
    [tiles addObject:_plusTile];
    [self showTiles:tiles];
}

- (NSView*)tileOf:(const kelpa::PreferencesEntry&)point {
    __weak KelpaTimePointsControl* weakSelf = self;
    const std::int64_t minutes = point.value;
    return makeTimeTile(point, _removalSymbol, ^{
      [weakSelf did:kelpa::PreferencesAct::Removed value:minutes];
    });
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

- (void)showValue:(const kelpa::PreferencesValue&)value {
    _proposed = std::get<std::int64_t>(value);
}

- (void)plusClicked:(id)sender {
    // Still on its way out, with a time that is yet to be taken.
    if (_popover)
        return;
    _newTime = makePicker();
    [_newTime setDateValue:dateOf(_proposed)];
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
    _popover = nil;
    [self did:kelpa::PreferencesAct::Added value:minutesOf(_newTime)];
}

- (void)setEnabled:(BOOL)enabled {
    [_plus setEnabled:enabled];
}

@end
