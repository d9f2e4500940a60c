// What can be seen: the windows on the screen with all their views, the menu bar and its menu. What is told
// of each is what the test asks for, by keys.
#import "platform/macos/check/driver/Commands.h"

#include <map>

namespace {

std::map<NSUInteger, __weak id> told;

NSArray* rectangle(NSRect rect) {
    return @[ @(rect.origin.x), @(rect.origin.y), @(rect.size.width), @(rect.size.height) ];
}

/// As a line of JSON has it. A date is its seconds since 1970, and an object of another kind its address,
/// which is its number.
id plain(id value) {
    if (!value)
        return [NSNull null];
    for (Class kind in @[ [NSString class], [NSNumber class], [NSArray class] ])
        if ([value isKindOfClass:kind])
            return value;
    if ([value isKindOfClass:[NSDate class]])
        return @([value timeIntervalSince1970]);
    if ([value isKindOfClass:[NSValue class]])
        return rectangle([value rectValue]);
    return @(reinterpret_cast<std::uintptr_t>((__bridge void*)value));
}

/// An object's classes, and what it says of the keys that were asked for each of them.
NSMutableDictionary* describe(id object, NSDictionary* asked) {
    told[[plain(object) unsignedLongValue]] = object;
    NSMutableArray* classes = [NSMutableArray array];
    NSMutableDictionary* all = [@{@"number" : plain(object), @"classes" : classes} mutableCopy];
    for (Class each = [object class]; each; each = [each superclass]) {
        [classes addObject:NSStringFromClass(each)];
        for (NSString* key in asked[@"keys"][[classes lastObject]])
            all[key] = plain([object valueForKeyPath:key]);
    }
    return all;
}

NSArray* labelsOf(NSSegmentedControl* segments) {
    NSMutableArray* labels = [NSMutableArray array];
    for (NSInteger i = 0; i < [segments segmentCount]; ++i)
        [labels addObject:[segments labelForSegment:i]];
    return labels;
}

/// Those that are hidden are not there.
void gather(NSView* view, NSDictionary* asked, NSMutableArray* all) {
    if ([view isHidden])
        return;
    NSMutableDictionary* seen = describe(view, asked);
    // In the window, counted from its lower left corner.
    seen[@"frame"] = rectangle([view convertRect:[view bounds] toView:nil]);
    if ([view isKindOfClass:[NSSegmentedControl class]])
        seen[@"itemTitles"] = labelsOf(static_cast<NSSegmentedControl*>(view));
    [all addObject:seen];
    for (NSView* child in [view subviews])
        gather(child, asked, all);
}

} // namespace

id driver::seen(NSUInteger number) {
    return told[number];
}

@implementation Driver (Windows)

+ (id)windows:(NSDictionary*)asked {
    NSMutableArray* all = [NSMutableArray array];
    for (NSWindow* window in [NSApp windows]) {
        if (![window isVisible])
            continue;
        NSMutableArray* views = [NSMutableArray array];
        if (asked[@"keys"][@"NSView"])
            gather([window contentView], asked, views);
        [all addObject:describe(window, asked)];
        [all lastObject][@"views"] = views;
    }
    return all;
}

+ (id)statusItem:(NSDictionary*)asked {
    return describe(driver::statusItem(), asked);
}

/// A line's action is lacking when its target does not have it.
+ (id)menu:(NSDictionary*)asked {
    NSMutableArray* lines = [NSMutableArray array];
    for (NSMenuItem* line in [[driver::statusItem() menu] itemArray]) {
        const SEL action = [line action];
        [lines addObject:describe(line, asked)];
        [lines lastObject][@"action"] = plain(action ? NSStringFromSelector(action) : nil);
        [lines lastObject][@"lacking"] = @(action && ![[line target] respondsToSelector:action]);
    }
    return lines;
}

@end
