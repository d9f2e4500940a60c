// What a person does. Each command gives nothing, or why a person could not do it.
#import "platform/macos/check/driver/Commands.h"

#include <initializer_list>

namespace {

/// Why the pointer cannot reach the middle of the view, or nil.
NSError* obstacle(NSView* view) {
    if (!view)
        return driver::problem(@"It is not there any more");
    if ([view isHiddenOrHasHiddenAncestor])
        return driver::problem(@"It is hidden");
    if ([view isKindOfClass:[NSControl class]] && ![static_cast<NSControl*>(view) isEnabled])
        return driver::problem(@"It is grey");
    [view scrollRectToVisible:[view bounds]];
    NSView* content = [[view window] contentView];
    const NSRect box = [view convertRect:[view bounds] toView:[content superview]];
    NSView* hit = [content hitTest:NSMakePoint(NSMidX(box), NSMidY(box))];
    if (hit == view || [hit isDescendantOf:view])
        return nil;
    return driver::problem([NSString stringWithFormat:@"At its middle of %@ there is %@",
                                                      NSStringFromRect(box), NSStringFromClass([hit class])]);
}

/// The view that the command names, or why it cannot be reached.
NSView* reach(NSDictionary* asked, NSError** error) {
    NSView* view = driver::viewNumbered(asked[@"view"]);
    *error = obstacle(view);
    return view;
}

void act(NSControl* control) {
    [control sendAction:[control action] to:[control target]];
}

id chooseLine(NSDictionary* asked) {
    for (NSMenuItem* line in [[driver::statusItem() menu] itemArray])
        if ([[line title] hasPrefix:asked[@"title"]] && ![line isSeparatorItem]) {
            if (![line isEnabled] || ![line action])
                return driver::problem(@"The line is grey");
            [NSApp sendAction:[line action] to:[line target] from:line];
            return nil;
        }
    return driver::problem(@"There is no such line");
}
const driver::Registration chooseCommand("choose line", chooseLine);

id press(NSDictionary* asked) {
    NSError* error = nil;
    NSView* view = reach(asked, &error);
    if (!error && ![view isKindOfClass:[NSButton class]])
        error = driver::problem(@"It is no button");
    if (!error)
        act(static_cast<NSButton*>(view));
    return error;
}
const driver::Registration pressCommand("press", press);

id clickInto(NSDictionary* asked) {
    NSError* error = nil;
    NSView* view = reach(asked, &error);
    if (error)
        return error;
    [[view window] makeKeyAndOrderFront:nil];
    if ([view isKindOfClass:[NSTextField class]] && [static_cast<NSTextField*>(view) currentEditor])
        return nil; // the click goes to the editor, which has the keyboard already
    if (![view acceptsFirstResponder] || ![[view window] makeFirstResponder:view])
        return driver::problem(@"It does not take the keyboard");
    return nil;
}
const driver::Registration clickCommand("click into", clickInto);

/// The window that a key goes to is the one that has the keyboard.
void strike(NSString* key, NSUInteger modifiers) {
    NSWindow* window = [NSApp keyWindow];
    for (const auto type : {NSEventTypeKeyDown, NSEventTypeKeyUp})
        [NSApp sendEvent:[NSEvent keyEventWithType:static_cast<NSEventType>(type)
                                                location:NSZeroPoint
                                           modifierFlags:modifiers
                                               timestamp:0
                                            windowNumber:[window windowNumber]
                                                 context:nil
                                              characters:key
                             charactersIgnoringModifiers:key
                                               isARepeat:NO
                                                 keyCode:0]];
}

id type(NSDictionary* asked) {
    if (![NSApp keyWindow])
        return driver::problem(@"No window has the keyboard");
    for (NSString* key in asked[@"keys"])
        strike(key, [asked[@"modifiers"] unsignedIntegerValue]);
    return nil;
}
const driver::Registration typeCommand("type", type);

/// A time is a text, or a digit that is typed into the hour, which is the part that has the keyboard first.
NSError* setTime(NSDatePicker* picker, id value) {
    if (![value isKindOfClass:[NSString class]])
        return driver::typeHour(picker, [value integerValue]);
    NSDateComponents* time =
        [[NSCalendar currentCalendar] components:NSCalendarUnitHour | NSCalendarUnitMinute
                                        fromDate:[picker dateValue]];
    NSArray* parts = [value componentsSeparatedByString:@":"];
    const NSInteger minutes =
        ([parts[0] integerValue] - [time hour]) * 60 + [parts[1] integerValue] - [time minute];
    [picker setDateValue:[[picker dateValue] dateByAddingTimeInterval:static_cast<double>(minutes) * 60]];
    return nil;
}

NSError* chooseEntry(NSPopUpButton* list, NSString* value) {
    const NSInteger index = [list indexOfItemWithTitle:value];
    if (index < 0)
        return driver::problem(@"There is no such entry");
    [list selectItemAtIndex:index];
    return nil;
}

NSError* chooseSegment(NSSegmentedControl* segments, NSString* value) {
    for (NSInteger i = 0; i < [segments segmentCount]; ++i)
        if ([[segments labelForSegment:i] isEqual:value]) {
            [segments setSelectedSegment:i];
            return nil;
        }
    return driver::problem(@"There is no such entry");
}

NSError* put(NSControl* control, id value) {
    id it = control;
    if ([control isKindOfClass:[NSPopUpButton class]])
        return chooseEntry(it, value);
    if ([control isKindOfClass:[NSSegmentedControl class]])
        return chooseSegment(it, value);
    if ([control isKindOfClass:[NSDatePicker class]])
        return setTime(it, value);
    if ([control isKindOfClass:[NSTableView class]])
        [it selectRowIndexes:[NSIndexSet indexSetWithIndex:[value unsignedIntegerValue]]
            byExtendingSelection:NO];
    else if ([control isKindOfClass:[NSSwitch class]])
        [static_cast<NSSwitch*>(it)
            setState:[value boolValue] ? NSControlStateValueOn : NSControlStateValueOff];
    else if ([control isKindOfClass:[NSStepper class]])
        [control setIntValue:[control intValue] + [value intValue]];
    else
        return driver::problem(@"It cannot be set");
    return nil;
}

/// Puts a control to a value: switch, list, segments, time, stepper, row of a table.
id set(NSDictionary* asked) {
    NSError* error = nil;
    NSControl* control = static_cast<NSControl*>(reach(asked, &error));
    if (!error)
        error = put(control, asked[@"value"]);
    if (!error)
        act(control);
    return error;
}
const driver::Registration setCommand("set", set);

id turnTo(NSDictionary* asked) {
    for (NSWindow* window in [NSApp windows]) {
        id tabs = [window isVisible] ? [window contentViewController] : nil;
        NSInteger index = 0;
        for (NSTabViewItem* tab in [tabs tabViewItems]) {
            if ([[tab label] isEqual:asked[@"tab"]]) {
                [tabs setSelectedTabViewItemIndex:index];
                return nil;
            }
            ++index;
        }
    }
    return driver::problem(@"There is no such tab");
}
const driver::Registration turnCommand("turn to", turnTo);

/// The pointer comes to a view that watches for it, or leaves it.
id point(NSDictionary* asked) {
    NSError* error = nil;
    NSView* view = reach(asked, &error);
    if (!error && [asked[@"leaves"] boolValue])
        [view mouseExited:[NSApp currentEvent]];
    else if (!error)
        [view mouseEntered:[NSApp currentEvent]];
    return error;
}
const driver::Registration pointCommand("point", point);

id closeWindow(NSDictionary* asked) {
    NSWindow* window = driver::windowNumbered(asked[@"window"]);
    if (!([window styleMask] & NSWindowStyleMaskClosable))
        return driver::problem(@"It has no close button");
    [window performClose:nil];
    return nil;
}
const driver::Registration closeCommand("close", closeWindow);

/// The system moves the windows of a screen that went away.
id moveWindow(NSDictionary* asked) {
    NSArray* to = asked[@"frame"];
    const NSRect frame =
        NSMakeRect([to[0] doubleValue], [to[1] doubleValue], [to[2] doubleValue], [to[3] doubleValue]);
    [driver::windowNumbered(asked[@"window"]) setFrame:frame display:YES];
    return nil;
}
const driver::Registration moveCommand("move", moveWindow);

} // namespace
