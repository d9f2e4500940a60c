#import "tests/macos/driver/Person.h"

#import <AppKit/AppKit.h>

#include "tests/macos/driver/Windows.h"
#include "tests/macos/runtime/Objects.h"
#import "tests/macos/standin/StandIns.h"

namespace driver {

namespace {

/// Why the pointer cannot reach the middle of the view, or nil.
NSError* obstacle(NSView* view) {
    if (!view)
        return problem(@"It is not there any more");
    if ([view isHiddenOrHasHiddenAncestor])
        return problem(@"It is hidden");
    if ([view isKindOfClass:[NSControl class]] && ![static_cast<NSControl*>(view) isEnabled])
        return problem(@"It is grey");
    [view scrollRectToVisible:[view bounds]];
    NSView* content = [[view window] contentView];
    const NSRect box = [view convertRect:[view bounds] toView:[content superview]];
    const NSPoint middle = NSMakePoint(NSMidX(box), NSMidY(box));
    NSView* hit = [content hitTest:middle];
    if (hit == view || [hit isDescendantOf:view])
        return nil;
    return problem([NSString stringWithFormat:@"At its middle %@ of %@ there is %@",
                                              NSStringFromPoint(middle), NSStringFromRect(box),
                                              hit ? [hit className] : @"nothing"]);
}

void act(NSControl* control) {
    [control sendAction:[control action] to:[control target]];
}

/// The window that a key goes to is the one that has the keyboard.
void strike(NSString* key, NSUInteger modifiers) {
    NSWindow* window = [NSApp keyWindow];
    for (const auto type : {NSKeyDown, NSKeyUp})
        [NSApp sendEvent:[NSEvent keyEventWithType:type
                                                location:NSZeroPoint
                                           modifierFlags:modifiers
                                               timestamp:standin::now()
                                            windowNumber:[window windowNumber]
                                                 context:nil
                                              characters:key
                             charactersIgnoringModifiers:key
                                               isARepeat:NO
                                                 keyCode:0]];
}

NSDate* atTime(NSDatePicker* picker, NSInteger hour, NSInteger minute) {
    NSCalendar* calendar = [NSCalendar currentCalendar];
    NSDateComponents* date = [calendar components:NSCalendarUnitYear | NSCalendarUnitMonth | NSCalendarUnitDay
                                         fromDate:[picker dateValue]];
    [date setHour:hour];
    [date setMinute:minute];
    return [calendar dateFromComponents:date];
}

/// A digit of the hour, which is the part that has the keyboard first. The second one of two belongs to the
/// first.
void typeHour(NSDatePicker* picker, NSInteger digit) {
    NSNumber* first = [recordOf(picker) objectForKey:@"digit"];
    NSDateComponents* time = [[NSCalendar currentCalendar] components:NSCalendarUnitMinute
                                                             fromDate:[picker dateValue]];
    const NSInteger hour = [first integerValue] * 10 + digit;
    [recordOf(picker) setObject:atTime(picker, hour, [time minute]) forKey:@"date"];
    if (first)
        [recordOf(picker) removeObjectForKey:@"digit"];
    else
        [recordOf(picker) setObject:@(digit) forKey:@"digit"];
    act(picker);
}

void setTime(NSDatePicker* picker, NSString* value) {
    NSArray* parts = [value componentsSeparatedByString:@":"];
    [recordOf(picker) setObject:atTime(picker, [parts[0] integerValue], [parts[1] integerValue])
                         forKey:@"date"];
    act(picker);
}

NSError* setSegment(NSSegmentedControl* segments, NSString* value) {
    for (NSInteger i = 0; i < [segments segmentCount]; ++i)
        if ([[segments labelForSegment:i] isEqual:value]) {
            [segments setSelectedSegment:i];
            act(segments);
            return nil;
        }
    return problem(@"There is no such entry");
}

NSError* setList(NSPopUpButton* list, NSString* value) {
    const NSInteger index = [list indexOfItemWithTitle:value];
    if (index < 0)
        return problem(@"There is no such entry");
    [list selectItemAtIndex:index];
    act(list);
    return nil;
}

NSError* setControl(NSControl* control, id value) {
    if ([control isKindOfClass:[NSPopUpButton class]])
        return setList(static_cast<NSPopUpButton*>(control), value);
    if ([control isKindOfClass:[NSSegmentedControl class]])
        return setSegment(static_cast<NSSegmentedControl*>(control), value);
    if ([control isKindOfClass:[NSDatePicker class]]) {
        if ([value isKindOfClass:[NSString class]])
            setTime(static_cast<NSDatePicker*>(control), value);
        else
            typeHour(static_cast<NSDatePicker*>(control), [value integerValue]);
    } else if ([control isKindOfClass:[NSTableView class]]) {
        [static_cast<NSTableView*>(control)
                selectRowIndexes:[NSIndexSet indexSetWithIndex:[value unsignedIntegerValue]]
            byExtendingSelection:NO];
    } else if ([control isKindOfClass:[NSSwitch class]]) {
        [static_cast<NSSwitch*>(control)
            setState:[value boolValue] ? NSControlStateValueOn : NSControlStateValueOff];
        act(control);
    } else if ([control isKindOfClass:[NSStepper class]]) {
        [control setIntValue:[control intValue] + [value intValue]];
        act(control);
    } else {
        return problem(@"It cannot be set");
    }
    return nil;
}

NSArray* tabs(NSWindow* window) {
    return [[recordOf(window) objectForKey:@"controller"] tabViewItems];
}

} // namespace

id chooseLine(NSDictionary* asked) {
    NSMenu* menu = standin::statusMenu();
    for (NSMenuItem* line in [menu itemArray])
        if ([[line title] hasPrefix:asked[@"title"]] && ![line isSeparatorItem]) {
            if (![line isEnabled] || ![line action])
                return problem(@"The line is grey");
            [NSApp sendAction:[line action] to:[line target] from:line];
            return nil;
        }
    return problem(@"There is no such line");
}

id press(NSDictionary* asked) {
    NSView* view = viewNumbered(asked[@"view"]);
    if (NSError* error = obstacle(view))
        return error;
    if (![view isKindOfClass:[NSButton class]])
        return problem(@"It is no button");
    act(static_cast<NSButton*>(view));
    return nil;
}

id clickInto(NSDictionary* asked) {
    NSView* view = viewNumbered(asked[@"view"]);
    if (NSError* error = obstacle(view))
        return error;
    [[view window] makeKeyAndOrderFront:nil];
    if ([view isKindOfClass:[NSTextField class]] && [static_cast<NSTextField*>(view) currentEditor])
        return nil; // the click goes to the editor, which has the keyboard already
    if (![view acceptsFirstResponder] || ![[view window] makeFirstResponder:view])
        return problem(@"It does not take the keyboard");
    return nil;
}

id set(NSDictionary* asked) {
    NSView* view = viewNumbered(asked[@"view"]);
    if (NSError* error = obstacle(view))
        return error;
    return setControl(static_cast<NSControl*>(view), asked[@"value"]);
}

id type(NSDictionary* asked) {
    if (![NSApp keyWindow])
        return problem(@"No window has the keyboard");
    for (NSString* key in asked[@"keys"])
        strike(key, [asked[@"modifiers"] unsignedIntegerValue]);
    return nil;
}

id turnTo(NSDictionary* asked) {
    for (NSWindow* window in [NSApp windows]) {
        NSInteger index = 0;
        for (NSTabViewItem* tab in [window isVisible] ? tabs(window) : @[]) {
            if ([[tab label] isEqual:asked[@"tab"]]) {
                [[recordOf(window) objectForKey:@"controller"] setSelectedTabViewItemIndex:index];
                return nil;
            }
            ++index;
        }
    }
    return problem(@"There is no such tab");
}

id closeWindow(NSDictionary* asked) {
    NSWindow* window = windowNumbered(asked[@"window"]);
    if (!([window styleMask] & NSWindowStyleMaskClosable))
        return problem(@"It has no close button");
    [window performClose:nil];
    return nil;
}

} // namespace driver
