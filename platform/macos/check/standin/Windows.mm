// Screens, windows, tabs, popovers and the menu bar.
#import "platform/macos/check/standin/StandIns.h"

#import <objc/runtime.h>

NSString* const NSAboutPanelOptionCredits = @"Credits";
NSString* const NSAboutPanelOptionApplicationName = @"ApplicationName";
NSString* const NSAboutPanelOptionApplicationIcon = @"ApplicationIcon";
NSString* const NSImageNameApplicationIcon = @"Kelpa"; // a file of the bundle

// --- Screens

@implementation NSScreen (StandIn)

+ (NSScreen*)mainScreen {
    return [[self screens] firstObject];
}

/// Those of which the test told last, at first one.
+ (NSArray*)screens {
    NSArray* told = recordOf(NSApp)[@"screens"];
    NSMutableArray* all = [NSMutableArray array];
    for (NSDictionary* each in told ? told : @[ @{@"number" : @1, @"frame" : @"{{0, 0}, {800, 600}}"} ]) {
        NSScreen* screen = [self alloc];
        [screen setValue:each[@"number"] forKey:@"_screenNumber"];
        recordOf(screen)[@"frame"] = each[@"frame"];
        [all addObject:screen];
    }
    return all;
}

- (NSRect)frame {
    return NSRectFromString(recordOf(self)[@"frame"]);
}

@end

// --- Windows

@implementation NSWindow (StandIn)

+ (void)load {
    method_exchangeImplementations(class_getInstanceMethod(self, @selector(keyDown:)),
                                   class_getInstanceMethod(self, @selector(otherKeyDown:)));
    answer("NSApplication", "addWindowsItem:title:filename:", nothing);
}

/// Escape that nothing else took asks for the end of what is going on. For other keys, this has changed names
/// with GNUstep's own method.
- (void)otherKeyDown:(NSEvent*)event {
    if ([[event characters] isEqual:@"\033"])
        [[self firstResponder] doCommandBySelector:@selector(cancelOperation:)];
    else
        [self otherKeyDown:event];
}

+ (instancetype)windowWithContentViewController:(NSViewController*)controller {
    NSWindow* window = [[self alloc] initWithContentRect:[[controller view] frame]
                                               styleMask:NSTitledWindowMask | NSClosableWindowMask
                                                 backing:NSBackingStoreBuffered
                                                   defer:NO];
    [window setReleasedWhenClosed:NO];
    [window setContentView:[controller view]];
    recordOf(window)[@"contentViewController"] = controller;
    return window;
}

/// Covers screens that this machine does not have.
- (NSRect)constrainFrameRect:(NSRect)frame toScreen:(NSScreen*)screen {
    return frame;
}

@end

@implementation NSTabViewController (StandIn)

- (void)loadView {
    [self setTabView:[[NSTabView alloc] initWithFrame:NSMakeRect(0, 0, 100, 100)]];
}

- (void)addTabViewItem:(NSTabViewItem*)item {
    recordOf(item)[@"controller"] = [item viewController]; // here it does not own it
    [[self tabView] addTabViewItem:item];
}

@end

@implementation NSAlert (StandIn)

/// Here it is laid out when it runs, and only then, and its button ends that and no more.
- (void)layout {
    [self performSelector:@selector(_setupPanel)];
    NSButton* asked = [[self buttons] firstObject];
    NSButton* shown = [[self window] valueForKey:@"defButton"];
    [shown setTarget:[asked target]];
    [shown setAction:[asked action]];
}

@end

/// A window of its own that closes together with the one it points at. While it shows, its window keeps it.
@implementation NSPopover (StandIn)

- (void)showRelativeToRect:(NSRect)rect ofView:(NSView*)view preferredEdge:(NSRectEdge)side {
    NSWindow* window = [NSWindow windowWithContentViewController:[self contentViewController]];
    recordOf(self)[@"window"] = window;
    recordOf(window)[@"popover"] = self;
    [window setTitle:@"popover"];
    [window orderFront:nil];
    for (NSWindow* each in @[ window, [view window] ])
        [[NSNotificationCenter defaultCenter] addObserver:self
                                                 selector:@selector(closed:)
                                                     name:NSWindowWillCloseNotification
                                                   object:each];
}

- (void)closed:(NSNotification*)notification {
    NSWindow* window = recordOf(self)[@"window"];
    [[NSNotificationCenter defaultCenter] removeObserver:self];
    [window close];
    [[self delegate] popoverDidClose:notification];
    [self setContentViewController:nil];              // it would keep it for good
    [recordOf(window) removeObjectForKey:@"popover"]; // which may end it
}

@end

// --- The menu bar, and the application as others see it

@implementation NSStatusBar (StandIn)

+ (NSStatusBar*)systemStatusBar {
    return [[self alloc] init];
}

- (NSStatusItem*)statusItemWithLength:(CGFloat)length {
    id item = recordOf(NSApp)[@"statusItem"] = [[NSObject alloc] init];
    recordOf(item)[@"button"] = [NSButton buttonWithTitle:@"" target:nil action:nil];
    note(@"status item", @{});
    return item;
}

@end

@implementation NSApplication (StandIn)

- (void)orderFrontStandardAboutPanelWithOptions:(NSDictionary*)options {
    note(@"about", options);
}

- (void)activateIgnoringOtherApps:(BOOL)others {
    note(@"activate", @{@"others" : @(others)});
}

- (void)deactivate {
    note(@"deactivate", @{});
}

- (BOOL)isActive {
    return YES;
}

@end
