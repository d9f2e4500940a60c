// What a person does. Each command gives nothing, or why a person could not do it.
#import "platform/macos/check/driver/Commands.h"

#include <initializer_list>
#include <stdexcept>

namespace {

/// The window or view on the screen that a command names.
id named(NSDictionary* asked) {
    id found = driver::seen([asked[@"number"] unsignedLongValue]);
    NSWindow* window = [found isKindOfClass:[NSView class]] ? [found window] : found;
    if (![window isVisible])
        throw std::runtime_error("It is not there any more");
    return found;
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

/// Puts something of a window or a view to a value, if there is one, and sends it a message of which no more
/// is asked, or lets it do what it is there for. A date is a number of seconds since 1970.
+ (id)use:(NSDictionary*)asked {
    id object = asked[@"reached"] ? reached(asked) : named(asked);
    NSString* key = asked[@"key"];
    id value = asked[@"value"];
    if ([key isEqual:@"dateValue"])
        value = [NSDate dateWithTimeIntervalSince1970:[value doubleValue]];
    if ([key isEqual:@"selectedRow"])
        [object selectRowIndexes:[NSIndexSet indexSetWithIndex:[value unsignedIntegerValue]]
            byExtendingSelection:NO];
    else if (key)
        [object setValue:value forKeyPath:key];
    const SEL message = NSSelectorFromString(asked[@"message"]);
    if (message)
        [object performSelectorOnMainThread:message withObject:nil waitUntilDone:YES];
    else if ([object isKindOfClass:[NSControl class]])
        [object sendAction:[object action] to:[object target]];
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
