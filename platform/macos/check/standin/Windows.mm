// Screens, windows, tabs, popovers and the menu bar.
#import "platform/macos/check/standin/StandIns.h"

NSString* const NSAboutPanelOptionCredits = @"Credits";
NSString* const NSAboutPanelOptionApplicationName = @"ApplicationName";
NSString* const NSAboutPanelOptionApplicationIcon = @"ApplicationIcon";
NSString* const NSImageNameApplicationIcon = @"Kelpa"; // a file of the bundle

// --- Screens

namespace {

/// The first one is the main screen.
NSArray* __strong& plugged() {
    static NSArray* all = @[ @{@"NSScreenNumber" : @1, @"frame" : @"{{0, 0}, {800, 600}}"} ];
    return all;
}

} // namespace

@implementation NSScreen (StandIn)

+ (NSScreen*)mainScreen {
    return [[self screens] firstObject];
}

+ (NSArray*)screens {
    NSMutableArray* all = [NSMutableArray array];
    for (NSDictionary* description in plugged()) {
        NSScreen* screen = [self alloc];
        recordOf(screen)[@"description"] = description;
        [all addObject:screen];
    }
    return all;
}

- (NSRect)frame {
    return NSRectFromString([self deviceDescription][@"frame"]);
}

- (NSDictionary*)deviceDescription {
    return recordOf(self)[@"description"];
}

@end

// --- Windows

namespace {

void (*keyDownOfWindow)(NSWindow*, SEL, NSEvent*);

/// Escape that nothing else took asks for the end of what is going on.
void keyDown(NSWindow* window, SEL selector, NSEvent* event) {
    if ([[event characters] isEqual:@"\033"])
        [[window firstResponder] doCommandBySelector:@selector(cancelOperation:)];
    else
        keyDownOfWindow(window, selector, event);
}

} // namespace

@implementation NSWindow (StandIn)

+ (void)load {
    replace("NSWindow", @selector(keyDown:), keyDown, keyDownOfWindow);
    ignoreMessages("NSApplication", "addWindowsItem:title:filename:");
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

- (void)setContentViewController:(NSViewController*)controller {
    recordOf(self)[@"window"] = [NSWindow windowWithContentViewController:controller];
}

- (void)showRelativeToRect:(NSRect)rect ofView:(NSView*)view preferredEdge:(NSRectEdge)side {
    NSWindow* window = recordOf(self)[@"window"];
    recordOf(window)[@"popover"] = self;
    [window setTitle:@"popover"];
    [window orderFront:nil];
    [[NSNotificationCenter defaultCenter] addObserver:self
                                             selector:@selector(close)
                                                 name:NSWindowWillCloseNotification
                                               object:[view window]];
}

- (void)close {
    NSWindow* window = recordOf(self)[@"window"];
    [[NSNotificationCenter defaultCenter] removeObserver:self];
    [window close];
    [[self delegate] popoverDidClose:[NSNotification notificationWithName:NSPopoverDidCloseNotification
                                                                   object:self]];
    [recordOf(window) removeObjectForKey:@"popover"]; // which may end it
}

@end

@implementation Driver (Screens)

+ (id)screens:(NSDictionary*)asked {
    plugged() = asked[@"screens"];
    [[NSNotificationCenter defaultCenter]
        postNotificationName:NSApplicationDidChangeScreenParametersNotification
                      object:NSApp];
    return nil;
}

+ (id)clickBeside:(NSDictionary*)asked {
    for (NSWindow* window in [NSApp windows]) {
        NSPopover* popover = recordOf(window)[@"popover"];
        if ([popover behavior] == NSPopoverBehaviorTransient)
            [popover close];
    }
    return nil;
}

@end

// --- The menu bar, and the application as others see it

static id statusItem;

NSStatusItem* driver::statusItem() {
    return ::statusItem;
}

@implementation NSStatusBar (StandIn)

+ (NSStatusBar*)systemStatusBar {
    return [[self alloc] init];
}

- (NSStatusItem*)statusItemWithLength:(CGFloat)length {
    statusItem = [[NSObject alloc] init];
    recordOf(statusItem)[@"button"] = [NSButton buttonWithTitle:@"" target:nil action:nil];
    note(@"status item", @{});
    return statusItem;
}

@end

@implementation NSApplication (StandIn)

- (void)orderFrontStandardAboutPanelWithOptions:(NSDictionary*)options {
    NSMutableDictionary* told = [options mutableCopy];
    NSAttributedString* credits = options[NSAboutPanelOptionCredits];
    told[@"link"] = [[credits attribute:NSLinkAttributeName atIndex:0 effectiveRange:nullptr] absoluteString];
    told[NSAboutPanelOptionCredits] = [credits string];
    told[NSAboutPanelOptionApplicationIcon] = @(options[NSAboutPanelOptionApplicationIcon] != nil);
    note(@"about", told);
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
