// What a person sees, and does. What is told of each object is what the test asks for, by keys.
#import "platform/macos/check/driver/Commands.h"

#include <initializer_list>
#include <map>
#include <stdexcept>

namespace {

std::map<NSUInteger, __weak id> told;

id plain(id value, NSDictionary* keys);

/// An object's number and classes, and what it says of the keys that are asked for each of them.
NSDictionary* describe(id object, NSDictionary* keys) {
    const NSUInteger number = [object hash];
    told[number] = object;
    NSMutableArray* classes = [NSMutableArray array];
    NSMutableDictionary* all = [@{@"number" : @(number), @"classes" : classes} mutableCopy];
    for (Class each = [object class]; each; each = [each superclass]) {
        [classes addObject:NSStringFromClass(each)];
        for (NSString* key in keys[[classes lastObject]])
            all[key] = plain([object valueForKeyPath:key], keys);
    }
    return all;
}

/// As a line of JSON has it. A date is its seconds since 1970, and an object of another kind is described.
id plain(id value, NSDictionary* keys) {
    if (!value)
        return [NSNull null];
    if ([value isKindOfClass:[NSString class]] || [value isKindOfClass:[NSNumber class]])
        return value;
    if ([value isKindOfClass:[NSDate class]])
        return @([value timeIntervalSince1970]);
    if ([value isKindOfClass:[NSDictionary class]])
        return [NSDictionary dictionaryWithObjects:plain([value allValues], keys) forKeys:[value allKeys]];
    if ([value isKindOfClass:[NSValue class]]) {
        const NSRect rect = [value rectValue];
        return @[ @(rect.origin.x), @(rect.origin.y), @(rect.size.width), @(rect.size.height) ];
    }
    if (![value isKindOfClass:[NSArray class]])
        return describe(value, keys);
    NSMutableArray* all = [NSMutableArray array];
    for (id each in value)
        [all addObject:plain(each, keys)];
    return all;
}

/// What a command is about: an object that has been told of, or what a class has under a path of keys.
id subject(NSDictionary* asked) {
    if (asked[@"path"])
        return [NSClassFromString(asked[@"class"]) valueForKeyPath:asked[@"path"]];
    return told.at([asked[@"number"] unsignedLongValue]);
}

/// What is to be used. Windows have to be on the screen, and the pointer has to reach the middle of a view,
/// which it does not where that is hidden.
id reached(NSDictionary* asked) {
    id object = subject(asked);
    NSView* view = [object isKindOfClass:[NSView class]] ? object : nil;
    NSWindow* window = view ? [view window] : object;
    if (!window || ([window isKindOfClass:[NSWindow class]] && ![window isVisible]))
        throw std::runtime_error("It is not there any more");
    if (!view)
        return object;
    if ([view isKindOfClass:[NSControl class]] && ![object isEnabled])
        throw std::runtime_error("It is grey");
    [view scrollRectToVisible:[view bounds]];
    NSView* content = [window contentView];
    const NSRect box = [view convertRect:[view bounds] toView:[content superview]];
    NSView* hit = [content hitTest:NSMakePoint(NSMidX(box), NSMidY(box))];
    if (![hit isDescendantOf:view])
        throw std::runtime_error([[NSString stringWithFormat:@"There is %@", hit] UTF8String]);
    return view;
}

} // namespace

@implementation Driver (Person)

+ (id)see:(NSDictionary*)asked {
    id object = subject(asked);
    return plain(asked[@"key"] ? [object valueForKey:asked[@"key"]] : object, asked[@"keys"]);
}

/// Puts something of an object to a value, if there is one, and sends it a message of which no more is asked,
/// or lets it do what it is there for. A date is a number of seconds since 1970.
+ (id)use:(NSDictionary*)asked {
    id object = reached(asked);
    id value = asked[@"value"];
    if ([asked[@"key"] isEqual:@"dateValue"])
        value = [NSDate dateWithTimeIntervalSince1970:[value doubleValue]];
    if (asked[@"key"])
        [object setValue:value forKeyPath:asked[@"key"]];
    if (NSString* message = asked[@"message"]) {
        if (![NSApp sendAction:NSSelectorFromString(message) to:object from:asked[@"with"]])
            throw std::runtime_error("It does not know the message");
    } else if ([object respondsToSelector:@selector(action)] && [object action])
        [NSApp sendAction:[object action] to:[object target] from:object];
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

/// The window that a key goes to is the one that has the keyboard.
+ (id)strike:(NSDictionary*)asked {
    NSWindow* window = [NSApp keyWindow];
    if (!window)
        throw std::runtime_error("No window has the keyboard");
    for (const auto type : {NSEventTypeKeyDown, NSEventTypeKeyUp})
        [NSApp sendEvent:[NSEvent keyEventWithType:static_cast<NSEventType>(type)
                                                location:NSZeroPoint
                                           modifierFlags:[asked[@"modifiers"] unsignedIntegerValue]
                                               timestamp:0
                                            windowNumber:[window windowNumber]
                                                 context:nil
                                              characters:asked[@"key"]
                             charactersIgnoringModifiers:asked[@"key"]
                                               isARepeat:NO
                                                 keyCode:0]];
    return nil;
}

/// The system moves the windows of a screen that went away.
+ (id)move:(NSDictionary*)asked {
    [reached(asked) setFrame:NSRectFromString(asked[@"frame"]) display:YES];
    return nil;
}

@end

// What is asked for by a key and no class has.

@implementation NSView (Seen)

/// Counted from the lower left corner.
- (NSRect)frameInWindow {
    return [self convertRect:[self bounds] toView:nil];
}

@end

@implementation NSSegmentedControl (Seen)

- (NSArray*)itemTitles {
    NSMutableArray* all = [NSMutableArray array];
    for (NSInteger i = 0; i < [self segmentCount]; ++i)
        [all addObject:[self labelForSegment:i]];
    return all;
}

@end

@implementation NSMenuItem (Seen)

/// Nothing as well when the target does not have it.
- (NSString*)actionName {
    const SEL action = [self action];
    return action && [[self target] respondsToSelector:action] ? NSStringFromSelector(action) : nil;
}

@end
