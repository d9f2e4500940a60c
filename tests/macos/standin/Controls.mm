// What controls have there and not here.
#import <AppKit/AppKit.h>

#include "tests/macos/runtime/Objects.h"

NSString* const NSAccessibilityRadioButtonRole = @"radio button";
NSString* const NSAccessibilityRadioGroupRole = @"radio group";
NSString* const NSAccessibilityLinkRole = @"link";

namespace {

/// Keeps what is set under the message's name.
void keep(id view, SEL message, id value) {
    recordOf(view)[NSStringFromSelector(message)] = value;
}

} // namespace

@implementation NSView (AccessibilityStandIn)

+ (void)load {
    addMethods("NSView",
               "setAccessibilityRole: setAccessibilityLabel: setAccessibilityHelp: setAccessibilityValue: "
               "setIdentifier:",
               reinterpret_cast<void*>(keep));
    ignoreMessages("NSView", "setAccessibilityElement:");
    ignoreMessages("NSButton", "setContentTintColor:");
    ignoreMessages("NSTabViewItem", "setImage:");
}

- (NSString*)accessibilityLabel {
    return recordOf(self)[@"setAccessibilityLabel:"];
}

@end

@implementation NSControl (StandIn)

- (void)setLineBreakMode:(NSLineBreakMode)mode {
    [[self cell] setLineBreakMode:mode];
}

@end

@implementation NSButton (StandIn)

+ (instancetype)buttonWithTitle:(NSString*)title target:(id)target action:(SEL)action {
    NSButton* button = [[self alloc] initWithFrame:NSZeroRect];
    [button setTitle:title];
    [button setTarget:target];
    [button setAction:action];
    return button;
}

+ (instancetype)buttonWithImage:(NSImage*)image target:(id)target action:(SEL)action {
    NSButton* button = [self buttonWithTitle:@"" target:target action:action];
    [button setImage:image];
    [button setImagePosition:NSImageOnly];
    return button;
}

@end

@implementation NSTextField (StandIn)

+ (instancetype)textFieldWithString:(NSString*)text {
    NSTextField* field = [[self alloc] initWithFrame:NSZeroRect];
    [field setStringValue:text];
    return field;
}

+ (instancetype)labelWithString:(NSString*)text {
    NSTextField* label = [self textFieldWithString:text];
    [label setEditable:NO];
    [label setSelectable:NO];
    [label setBezeled:NO];
    [label setDrawsBackground:NO];
    return label;
}

+ (instancetype)wrappingLabelWithString:(NSString*)text {
    return [self labelWithString:text];
}

@end

@implementation NSTextView (StandIn)

/// What Escape means here. There it asks for the end of what is going on.
- (void)complete:(id)sender {
    [self doCommandBySelector:@selector(cancelOperation:)];
}

@end

@implementation NSSwitch (StandIn)

- (NSSize)intrinsicContentSize {
    return NSMakeSize(38, 22);
}

- (NSString*)accessibilityLabel {
    return [super accessibilityLabel];
}

/// Here one that is off would be grey.
- (void)setEnabled:(BOOL)enabled {
    [recordOf(self) setObject:@(enabled) forKey:@"enabled"];
}

- (BOOL)isEnabled {
    NSNumber* enabled = [recordOf(self) objectForKey:@"enabled"];
    return !enabled || [enabled boolValue];
}

@end

@implementation NSStepper (StandIn)

- (NSSize)intrinsicContentSize {
    return NSMakeSize(16, 24);
}

@end

@implementation NSSegmentedControl (StandIn)

- (NSString*)keyOf:(NSInteger)segment {
    return [NSString stringWithFormat:@"tag %ld", static_cast<long>(segment)];
}

- (void)setTag:(NSInteger)tag forSegment:(NSInteger)segment {
    [recordOf(self) setObject:@(tag) forKey:[self keyOf:segment]];
}

- (NSInteger)tagForSegment:(NSInteger)segment {
    return [[recordOf(self) objectForKey:[self keyOf:segment]] integerValue];
}

- (NSSize)intrinsicContentSize {
    return NSMakeSize(60 * static_cast<CGFloat>([self segmentCount]), 24);
}

@end

@implementation NSScroller (StandIn)

+ (CGFloat)scrollerWidthForControlSize:(NSControlSize)size scrollerStyle:(NSScrollerStyle)style {
    return 15;
}

@end

@protocol RowViews
- (NSView*)tableView:(NSTableView*)tableView viewForTableColumn:(NSTableColumn*)column row:(NSInteger)row;
@end

/// A list whose rows are views, one column of them.
@implementation NSTableView (StandIn)

static constexpr CGFloat heightOfRow = 20;

- (NSMutableArray*)rowViews {
    if (![recordOf(self) objectForKey:@"rows"])
        [recordOf(self) setObject:[NSMutableArray array] forKey:@"rows"];
    return [recordOf(self) objectForKey:@"rows"];
}

- (void)reloadData {
    NSMutableArray* rows = [self rowViews];
    NSMutableArray* spare = [rows mutableCopy];
    [recordOf(self) setObject:spare forKey:@"spare"];
    for (NSView* view in rows)
        [view removeFromSuperview];
    [rows removeAllObjects];
    const NSInteger count = [[self dataSource] numberOfRowsInTableView:self];
    const CGFloat width = [[[self tableColumns] firstObject] width];
    for (NSInteger row = 0; row < count; ++row) {
        NSView* view = [static_cast<id<RowViews>>([self delegate]) tableView:self
                                                          viewForTableColumn:[[self tableColumns] firstObject]
                                                                         row:row];
        [view setFrame:NSMakeRect(0, static_cast<CGFloat>(row) * heightOfRow, width, heightOfRow)];
        [self addSubview:view];
        [rows addObject:view];
    }
    [self setFrameSize:NSMakeSize(width, std::max<CGFloat>(1, static_cast<CGFloat>(count)) * heightOfRow)];
    if ([self selectedRow] >= count)
        [self deselectAll:nil];
}

- (NSView*)makeViewWithIdentifier:(NSString*)identifier owner:(id)owner {
    NSMutableArray* spare = [recordOf(self) objectForKey:@"spare"];
    NSView* view = [spare lastObject];
    if (![recordOf(view)[@"setIdentifier:"] isEqual:identifier])
        return nil;
    [spare removeLastObject];
    return view;
}

- (NSView*)viewAtColumn:(NSInteger)column row:(NSInteger)row makeIfNecessary:(BOOL)make {
    NSMutableArray* rows = [self rowViews];
    return row < static_cast<NSInteger>([rows count]) ? [rows objectAtIndex:static_cast<NSUInteger>(row)]
                                                      : nil;
}

- (NSInteger)numberOfRows {
    return static_cast<NSInteger>([[self rowViews] count]);
}

- (void)selectRowIndexes:(NSIndexSet*)rows byExtendingSelection:(BOOL)extend {
    [recordOf(self) setObject:[rows copy] forKey:@"selection"];
}

- (void)deselectAll:(id)sender {
    [recordOf(self) removeObjectForKey:@"selection"];
}

- (NSInteger)selectedRow {
    NSIndexSet* selection = [recordOf(self) objectForKey:@"selection"];
    return [selection count] ? static_cast<NSInteger>([selection firstIndex]) : -1;
}

- (void)drawRect:(NSRect)rect {
}

- (void)setDataSource:(id)source {
    [recordOf(self) setObject:[NSValue valueWithNonretainedObject:source] forKey:@"source"];
}

- (id)dataSource {
    return [[recordOf(self) objectForKey:@"source"] nonretainedObjectValue];
}

@end

@implementation NSDatePicker (StandIn)

/// A date that is set is another one to type in: the digit that was typed before is no longer waited for.
- (void)setDateValue:(NSDate*)date {
    [recordOf(self) setObject:date forKey:@"date"];
    [recordOf(self) removeObjectForKey:@"digit"];
}

- (NSDate*)dateValue {
    return [recordOf(self) objectForKey:@"date"];
}

- (NSSize)intrinsicContentSize {
    return NSMakeSize(80, 24);
}

@end
