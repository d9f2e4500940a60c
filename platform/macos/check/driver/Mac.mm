// What the driver asks of a Mac around the program, where AppKit itself draws and time passes by itself.
// Nobody has seen it run there.
#import "platform/macos/check/driver/Commands.h"

#import <objc/runtime.h>

#include <algorithm>
#include <cstdlib>

static NSStatusItem* shownItem;

@implementation NSStatusBar (Driver)

/// Also takes the settings of a test, in the place of all that was stored under this bundle's own name.
+ (void)load {
    method_exchangeImplementations(class_getInstanceMethod(self, @selector(statusItemWithLength:)),
                                   class_getInstanceMethod(self, @selector(keptItemWithLength:)));
    if (const char* file = std::getenv("KELPA_TEST_SETTINGS"))
        [[NSUserDefaults standardUserDefaults]
            setPersistentDomain:[NSDictionary dictionaryWithContentsOfFile:@(file)]
                        forName:[[NSBundle mainBundle] bundleIdentifier]];
}

/// Has changed names with AppKit's own method, which it calls.
- (NSStatusItem*)keptItemWithLength:(CGFloat)length {
    return shownItem = [self keptItemWithLength:length];
}

@end

@implementation NSApplication (Driver)

- (NSStatusItem*)statusItem {
    return shownItem;
}

@end

void driver::pass(double seconds) {
    constexpr double settling = 0.2; // in which what a command leads to has been done, without animations
    dealWithEvents([NSDate dateWithTimeIntervalSinceNow:std::max(seconds, settling)]);
}
