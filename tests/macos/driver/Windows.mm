#import "tests/macos/driver/Windows.h"

#include "tests/macos/runtime/Objects.h"
#import "tests/macos/standin/StandIns.h"

namespace driver {

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

/// As the person knows them; anything else is a plain view.
NSString* kindOf(NSView* view) {
    if ([view isKindOfClass:[NSTextField class]])
        return [static_cast<NSTextField*>(view) isEditable] ? @"field" : @"text";
    if (NSString* role = recordOf(view)[@"setAccessibilityRole:"])
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
        if (NSString* kind = [kinds objectForKey:NSStringFromClass(each)])
            return kind;
    return @"view";
}

NSString* nameOf(NSView* view) {
    if (NSString* label = [view accessibilityLabel])
        return label;
    if (![view isKindOfClass:[NSButton class]])
        return @"";
    NSButton* button = static_cast<NSButton*>(view);
    NSString* description = [button image] ? [recordOf([button image]) objectForKey:@"description"] : nil;
    return [[button title] length] ? [button title] : description ? description : @"";
}

NSString* timeIn(NSDatePicker* picker) {
    NSDateComponents* time =
        [[NSCalendar currentCalendar] components:NSCalendarUnitHour | NSCalendarUnitMinute
                                        fromDate:[picker dateValue]];
    return [NSString
        stringWithFormat:@"%02ld:%02ld", static_cast<long>([time hour]), static_cast<long>([time minute])];
}

/// What it shows or is set to.
id valueOf(NSView* view) {
    if ([view isKindOfClass:[NSTextField class]]) {
        NSText* editor = [static_cast<NSTextField*>(view) currentEditor];
        return editor ? [editor string] : [static_cast<NSTextField*>(view) stringValue];
    }
    if ([view isKindOfClass:[NSDatePicker class]])
        return timeIn(static_cast<NSDatePicker*>(view));
    if ([view isKindOfClass:[NSPopUpButton class]])
        return [static_cast<NSPopUpButton*>(view) titleOfSelectedItem];
    if ([view isKindOfClass:[NSSegmentedControl class]]) {
        NSSegmentedControl* segments = static_cast<NSSegmentedControl*>(view);
        return [segments selectedSegment] < 0 ? nil : [segments labelForSegment:[segments selectedSegment]];
    }
    if ([view isKindOfClass:[NSSwitch class]])
        return @([static_cast<NSSwitch*>(view) state] == NSControlStateValueOn);
    if ([view isKindOfClass:[NSTableView class]])
        return @([static_cast<NSTableView*>(view) selectedRow]);
    return recordOf(view)[@"setAccessibilityValue:"];
}

NSArray* choicesOf(NSView* view) {
    if ([view isKindOfClass:[NSPopUpButton class]])
        return [static_cast<NSPopUpButton*>(view) itemTitles];
    if (![view isKindOfClass:[NSSegmentedControl class]])
        return nil;
    NSMutableArray* labels = [NSMutableArray array];
    for (NSInteger i = 0; i < [static_cast<NSSegmentedControl*>(view) segmentCount]; ++i)
        [labels addObject:[static_cast<NSSegmentedControl*>(view) labelForSegment:i]];
    return labels;
}

BOOL hasKeyboard(NSView* view) {
    NSResponder* first = [[view window] firstResponder];
    if (first == view)
        return YES;
    return [view isKindOfClass:[NSTextField class]] && first &&
           [static_cast<NSTextField*>(view) currentEditor] == first;
}

NSString* pictureOf(NSView* view) {
    if (![view respondsToSelector:@selector(image)])
        return nil;
    NSImage* image = [static_cast<NSButton*>(view) image];
    return image ? [recordOf(image) objectForKey:@"symbol"] : nil;
}

NSDictionary* describe(NSView* view) {
    const BOOL control = [view isKindOfClass:[NSControl class]];
    return @{
        @"number" : numberOf(view),
        @"class" : NSStringFromClass([view class]),
        @"kind" : kindOf(view),
        @"name" : nameOf(view),
        @"value" : orNull(valueOf(view)),
        @"help" : orNull(recordOf(view)[@"setAccessibilityHelp:"]),
        @"tip" : orNull([view toolTip]),
        @"picture" : orNull(pictureOf(view)),
        @"choices" : orNull(choicesOf(view)),
        @"enabled" : @(!control || [static_cast<NSControl*>(view) isEnabled]),
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
        @"class" : NSStringFromClass([window class]),
        @"title" : [window title],
        @"frame" : rectangle([window frame]),
        @"level" : @([window level]),
        @"alpha" : @([window alphaValue]),
        @"key" : @([window isKeyWindow]),
        @"style" : @([window styleMask]),
        @"views" : views,
    };
}

/// This machine's own windows for menus and the application's picture are not there on the other one.
BOOL isThere(NSWindow* window) {
    return [window isVisible] && ![NSStringFromClass([window class]) hasSuffix:@"MenuPanel"] &&
           ![NSStringFromClass([window class]) hasSuffix:@"IconWindow"];
}

NSView* viewWithin(NSView* view, NSNumber* number) {
    if ([numberOf(view) isEqual:number])
        return view;
    for (NSView* child in [view subviews])
        if (NSView* found = viewWithin(child, number))
            return found;
    return nil;
}

NSDictionary* describeLine(NSMenuItem* line) {
    if ([line isSeparatorItem])
        return @{@"separator" : @YES};
    return @{
        @"title" : [line title],
        @"key" : [line keyEquivalent],
        @"enabled" : @([line isEnabled]),
        @"action" : orNull([line action] ? NSStringFromSelector([line action]) : nil),
        @"picture" : orNull([line image] ? [recordOf([line image]) objectForKey:@"symbol"] : nil),
        @"tag" : @([line tag]),
    };
}

} // namespace

id windows(NSDictionary*) {
    NSMutableArray* all = [NSMutableArray array];
    for (NSWindow* window in [NSApp windows])
        if (isThere(window))
            [all addObject:describeWindow(window)];
    return all;
}

id title(NSDictionary*) {
    NSButton* button = standin::statusButton();
    return button ? @{@"title" : [button title], @"picture" : @([button image] != nil)} : nil;
}

id menu(NSDictionary*) {
    NSMutableArray* lines = [NSMutableArray array];
    for (NSMenuItem* line in [standin::statusMenu() itemArray])
        [lines addObject:describeLine(line)];
    return lines;
}

id lackingActions(NSDictionary*) {
    NSMutableArray* lacking = [NSMutableArray array];
    for (NSMenuItem* line in [standin::statusMenu() itemArray])
        if ([line action] && ![[line target] respondsToSelector:[line action]])
            [lacking addObject:NSStringFromSelector([line action])];
    return lacking;
}

NSView* viewNumbered(NSNumber* number) {
    for (NSWindow* window in [NSApp windows])
        if (NSView* found = [window isVisible] ? viewWithin([window contentView], number) : nil)
            return found;
    return nil;
}

NSWindow* windowNumbered(NSNumber* number) {
    for (NSWindow* window in [NSApp windows])
        if ([numberOf(window) isEqual:number])
            return window;
    return nil;
}

NSError* problem(NSString* text) {
    return [NSError errorWithDomain:@"driver" code:1 userInfo:@{NSLocalizedDescriptionKey : text}];
}

} // namespace driver
