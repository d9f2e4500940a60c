// What can be seen: the windows on the screen with all their views, the menu bar and its menu.
#import "platform/macos/check/driver/Commands.h"

namespace {

id orNull(id value) {
    return value ? value : [NSNull null];
}

NSNumber* numberOf(id object) {
    return @(reinterpret_cast<std::uintptr_t>((__bridge void*)object));
}

NSArray* rectangle(NSRect rect) {
    return @[ @(rect.origin.x), @(rect.origin.y), @(rect.size.width), @(rect.size.height) ];
}

/// As a person knows them; anything else is a plain view.
NSString* kindOf(NSView* view) {
    if ([view isKindOfClass:[NSTextField class]])
        return [static_cast<NSTextField*>(view) isEditable] ? @"field" : @"text";
    NSDictionary* roles = @{
        NSAccessibilityRadioButtonRole : @"radio button",
        NSAccessibilityRadioGroupRole : @"radio group",
        NSAccessibilityLinkRole : @"link",
    };
    if (NSString* role = [view accessibilityRole] ? roles[[view accessibilityRole]] : nil)
        return role;
    NSDictionary* kinds = @{
        @"NSPopUpButton" : @"list",
        @"NSButton" : @"button",
        @"NSSwitch" : @"switch",
        @"NSSegmentedControl" : @"segments",
        @"NSDatePicker" : @"time",
        @"NSStepper" : @"stepper",
        @"NSTableView" : @"table",
        @"NSImageView" : @"picture",
    };
    for (Class each = [view class]; each; each = [each superclass])
        if (NSString* kind = kinds[NSStringFromClass(each)])
            return kind;
    return @"view";
}

NSString* nameOf(NSView* view) {
    if (NSString* label = [view accessibilityLabel])
        return label;
    if (![view isKindOfClass:[NSButton class]])
        return @"";
    NSButton* button = static_cast<NSButton*>(view);
    NSString* description = [[button image] accessibilityDescription];
    return [[button title] length] || !description ? [button title] : description;
}

NSString* timeIn(NSDatePicker* picker) {
    NSDateComponents* time =
        [[NSCalendar currentCalendar] components:NSCalendarUnitHour | NSCalendarUnitMinute
                                        fromDate:[picker dateValue]];
    return [NSString
        stringWithFormat:@"%02ld:%02ld", static_cast<long>([time hour]), static_cast<long>([time minute])];
}

NSArray* labelsOf(NSSegmentedControl* segments) {
    NSMutableArray* labels = [NSMutableArray array];
    for (NSInteger i = 0; i < [segments segmentCount]; ++i)
        [labels addObject:[segments labelForSegment:i]];
    return labels;
}

/// What it shows or is set to.
id valueOf(NSView* view, NSString* kind) {
    id it = view;
    if ([view isKindOfClass:[NSTextField class]])
        return [it currentEditor] ? [[it currentEditor] string] : [it stringValue];
    if ([kind isEqual:@"time"])
        return timeIn(it);
    if ([kind isEqual:@"list"])
        return [it titleOfSelectedItem];
    if ([kind isEqual:@"segments"])
        return [it selectedSegment] < 0 ? nil : labelsOf(it)[static_cast<NSUInteger>([it selectedSegment])];
    if ([kind isEqual:@"switch"])
        return @([static_cast<NSSwitch*>(view) state] == NSControlStateValueOn);
    return [kind isEqual:@"radio button"] ? [view accessibilityValue] : nil;
}

NSArray* choicesOf(NSView* view, NSString* kind) {
    if ([kind isEqual:@"list"])
        return [static_cast<NSPopUpButton*>(view) itemTitles];
    return [kind isEqual:@"segments"] ? labelsOf(static_cast<NSSegmentedControl*>(view)) : nil;
}

BOOL hasKeyboard(NSView* view) {
    NSResponder* first = [[view window] firstResponder];
    if (first == view)
        return YES;
    return first && [view isKindOfClass:[NSTextField class]] &&
           [static_cast<NSTextField*>(view) currentEditor] == first;
}

NSDictionary* describe(NSView* view) {
    NSString* kind = kindOf(view);
    const BOOL grey = [view isKindOfClass:[NSControl class]] && ![static_cast<NSControl*>(view) isEnabled];
    return @{
        @"number" : numberOf(view),
        @"class" : NSStringFromClass([view class]),
        @"kind" : kind,
        @"name" : nameOf(view),
        @"value" : orNull(valueOf(view, kind)),
        @"help" : orNull([view accessibilityHelp]),
        @"tip" : orNull([view toolTip]),
        @"choices" : orNull(choicesOf(view, kind)),
        @"enabled" : @(!grey),
        @"keyboard" : @(hasKeyboard(view)),
        // In the window, counted from its lower left corner.
        @"frame" : rectangle([view convertRect:[view bounds] toView:nil]),
    };
}

/// Those that are hidden are not there.
void gather(NSView* view, NSMutableArray* all) {
    if ([view isHidden])
        return;
    [all addObject:describe(view)];
    for (NSView* child in [view subviews])
        gather(child, all);
}

NSDictionary* describeWindow(NSWindow* window) {
    NSMutableArray* views = [NSMutableArray array];
    gather([window contentView], views);
    return @{
        @"number" : numberOf(window),
        @"title" : [window title],
        @"frame" : rectangle([window frame]),
        @"level" : @([window level]),
        @"alpha" : @([window alphaValue]),
        @"key" : @([window isKeyWindow]),
        @"views" : views,
    };
}

/// The toolkits' own windows for menus, the menu bar and the application's picture are no windows to a
/// person.
BOOL isThere(NSWindow* window) {
    for (NSString* own in @[ @"MenuPanel", @"IconWindow", @"StatusBarWindow" ])
        if ([NSStringFromClass([window class]) hasSuffix:own])
            return NO;
    return [window isVisible];
}

id windows(NSDictionary*) {
    NSMutableArray* all = [NSMutableArray array];
    for (NSWindow* window in [NSApp windows])
        if (isThere(window))
            [all addObject:describeWindow(window)];
    return all;
}
const driver::Registration windowsCommand("windows", windows);

id title(NSDictionary*) {
    NSButton* button = static_cast<NSButton*>(static_cast<id>([driver::statusItem() button]));
    if (!button)
        return nil;
    return @{
        @"title" : [button title],
        @"picture" : @([button image] != nil),
        @"tip" : orNull([button toolTip]),
    };
}
const driver::Registration titleCommand("title", title);

/// A line's action is lacking when its target does not have it.
NSDictionary* describeLine(NSMenuItem* line) {
    const SEL action = [line action];
    return @{
        @"separator" : @([line isSeparatorItem]),
        @"title" : [line title],
        @"key" : [line keyEquivalent],
        @"enabled" : @([line isEnabled]),
        @"action" : orNull(action ? NSStringFromSelector(action) : nil),
        @"lacking" : @(action && ![[line target] respondsToSelector:action]),
        @"picture" : orNull([line image] ? driver::symbolOf([line image]) : nil),
        @"tag" : @([line tag]),
    };
}

id menu(NSDictionary*) {
    NSMutableArray* lines = [NSMutableArray array];
    for (NSMenuItem* line in [[driver::statusItem() menu] itemArray])
        [lines addObject:describeLine(line)];
    return lines;
}
const driver::Registration menuCommand("menu", menu);

NSView* viewWithin(NSView* view, NSNumber* number) {
    if ([numberOf(view) isEqual:number])
        return view;
    for (NSView* child in [view subviews])
        if (NSView* found = viewWithin(child, number))
            return found;
    return nil;
}

} // namespace

NSView* driver::viewNumbered(NSNumber* number) {
    for (NSWindow* window in [NSApp windows])
        if (NSView* found = [window isVisible] ? viewWithin([window contentView], number) : nil)
            return found;
    return nil;
}

NSWindow* driver::windowNumbered(NSNumber* number) {
    for (NSWindow* window in [NSApp windows])
        if ([numberOf(window) isEqual:number])
            return window;
    return nil;
}
