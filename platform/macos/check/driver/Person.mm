// What a person does. Each command gives nothing, or why a person could not do it.
#import "platform/macos/check/driver/Commands.h"

#include <initializer_list>
#include <stdexcept>

namespace {

BOOL isNumbered(id object, NSNumber* number) {
    return [number unsignedLongValue] == reinterpret_cast<std::uintptr_t>((__bridge void*)object);
}

NSView* viewWithin(NSView* view, NSNumber* number) {
    if (isNumbered(view, number))
        return view;
    for (NSView* child in [view subviews])
        if (NSView* found = viewWithin(child, number))
            return found;
    return nil;
}

/// The window or view on the screen that a command names.
id named(NSDictionary* asked) {
    for (NSWindow* window in [NSApp windows]) {
        if (![window isVisible])
            continue;
        if (isNumbered(window, asked[@"number"]))
            return window;
        if (NSView* found = viewWithin([window contentView], asked[@"number"]))
            return found;
    }
    throw std::runtime_error("It is not there any more");
}

/// The view that a command names. The pointer has to reach its middle.
id reached(NSDictionary* asked) {
    NSView* view = named(asked);
    if ([view isHiddenOrHasHiddenAncestor])
        throw std::runtime_error("It is hidden");
    if ([view isKindOfClass:[NSControl class]] && ![static_cast<NSControl*>(view) isEnabled])
        throw std::runtime_error("It is grey");
    [view scrollRectToVisible:[view bounds]];
    NSView* content = [[view window] contentView];
    const NSRect box = [view convertRect:[view bounds] toView:[content superview]];
    NSView* hit = [content hitTest:NSMakePoint(NSMidX(box), NSMidY(box))];
    if (![hit isDescendantOf:view])
        throw std::runtime_error([[hit description] UTF8String]);
    return view;
}

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

} // namespace

@implementation Driver (Person)

+ (id)choose:(NSDictionary*)asked {
    [[driver::statusItem() menu] performActionForItemAtIndex:[asked[@"line"] integerValue]];
    return nil;
}

/// Sends a window or view a message of which no more is asked.
+ (id)tell:(NSDictionary*)asked {
    [named(asked) performSelectorOnMainThread:NSSelectorFromString(asked[@"message"])
                                   withObject:nil
                                waitUntilDone:YES];
    return nil;
}

+ (id)point:(NSDictionary*)asked {
    (void)reached(asked);
    return [self tell:asked];
}

/// Puts something of a window or a view to a value; a date is a number of seconds since 1970.
+ (id)put:(NSDictionary*)asked {
    id value = asked[@"value"];
    if ([asked[@"key"] isEqual:@"dateValue"])
        value = [NSDate dateWithTimeIntervalSince1970:[value doubleValue]];
    [named(asked) setValue:value forKeyPath:asked[@"key"]];
    return nil;
}

/// Uses a control: puts it to a value, if there is one, and lets it do what it is there for.
+ (id)use:(NSDictionary*)asked {
    id control = reached(asked);
    if ([control isKindOfClass:[NSTableView class]])
        [control selectRowIndexes:[NSIndexSet indexSetWithIndex:[asked[@"value"] unsignedIntegerValue]]
             byExtendingSelection:NO];
    else if (asked[@"key"])
        [self put:asked];
    [control sendAction:[control action] to:[control target]];
    return nil;
}

+ (id)clickInto:(NSDictionary*)asked {
    id view = reached(asked);
    [[view window] makeKeyAndOrderFront:nil];
    if ([view isKindOfClass:[NSTextField class]] && [view currentEditor])
        return nil; // the click goes to the editor, which has the keyboard already
    if (![view acceptsFirstResponder] || ![[view window] makeFirstResponder:view])
        throw std::runtime_error("It does not take the keyboard");
    return nil;
}

+ (id)type:(NSDictionary*)asked {
    if (![NSApp keyWindow])
        throw std::runtime_error("No window has the keyboard");
    for (NSString* key in asked[@"keys"])
        strike(key, [asked[@"modifiers"] unsignedIntegerValue]);
    return nil;
}

/// The system moves the windows of a screen that went away.
+ (id)move:(NSDictionary*)asked {
    [named(asked) setFrame:NSRectFromString(asked[@"frame"]) display:YES];
    return nil;
}

@end
