// What the driver asks of a Mac around the program, where AppKit itself draws and time passes by itself.
// Nobody has seen it run there.
#import "platform/macos/check/driver/Commands.h"

#import <objc/runtime.h>

#include <algorithm>
#include <cstdlib>

namespace {

/// In which what a command leads to has been done, without animations.
constexpr double settling = 0.2;

NSStatusItem* shownItem;
NSStatusItem* (*makeItem)(id, SEL, CGFloat);

NSStatusItem* makeAndKeepItem(id bar, SEL selector, CGFloat length) {
    return shownItem = makeItem(bar, selector, length);
}

/// The settings of a test, in the place of all that was stored under this bundle's own name.
void takeSettings() {
    const char* file = std::getenv("KELPA_TEST_SETTINGS");
    if (!file)
        return;
    NSDictionary* settings = [NSDictionary dictionaryWithContentsOfFile:[NSString stringWithUTF8String:file]];
    [[NSUserDefaults standardUserDefaults] setPersistentDomain:settings
                                                       forName:[[NSBundle mainBundle] bundleIdentifier]];
}

} // namespace

@implementation Driver (Mac)

+ (void)load {
    Method method = class_getInstanceMethod([NSStatusBar class], @selector(statusItemWithLength:));
    const IMP before =
        method_setImplementation(method, reinterpret_cast<IMP>(reinterpret_cast<void*>(makeAndKeepItem)));
    makeItem = reinterpret_cast<decltype(makeItem)>(reinterpret_cast<void*>(before));
    takeSettings();
}

@end

NSStatusItem* driver::statusItem() {
    return shownItem;
}

void driver::pass(double seconds) {
    NSDate* end = [NSDate dateWithTimeIntervalSinceNow:std::max(seconds, settling)];
    while (NSEvent* event = [NSApp nextEventMatchingMask:NSAnyEventMask
                                               untilDate:end
                                                  inMode:NSDefaultRunLoopMode
                                                 dequeue:YES])
        [NSApp sendEvent:event];
}
