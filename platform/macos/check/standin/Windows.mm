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

@interface ScreenStandIn : NSScreen
@property(nonatomic) NSDictionary* deviceDescription;
@end

@implementation ScreenStandIn

- (NSRect)frame {
    return NSRectFromString([self deviceDescription][@"frame"]);
}

/// For the windows of this machine.
- (int)screenNumber {
    return 0;
}

@end

@implementation NSScreen (StandIn)

+ (NSScreen*)mainScreen {
    return [[self screens] firstObject];
}

+ (NSArray*)screens {
    NSMutableArray* all = [NSMutableArray array];
    for (NSDictionary* description in plugged()) {
        [all addObject:[ScreenStandIn alloc]];
        [[all lastObject] setDeviceDescription:description];
    }
    return all;
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

NSWindow* makeWindow(NSView* content, NSUInteger style) {
    NSWindow* window = [[NSWindow alloc] initWithContentRect:[content frame]
                                                   styleMask:style
                                                     backing:NSBackingStoreBuffered
                                                       defer:NO];
    [window setReleasedWhenClosed:NO];
    [window setContentView:content];
    return window;
}

} // namespace

@implementation NSWindow (StandIn)

+ (void)load {
    replace("NSWindow", @selector(keyDown:), keyDown, keyDownOfWindow);
    ignoreMessages("NSApplication", "addWindowsItem:title:filename:");
}

+ (instancetype)windowWithContentViewController:(NSViewController*)controller {
    NSWindow* window = makeWindow([controller view], NSTitledWindowMask | NSClosableWindowMask);
    recordOf(window)[@"contentViewController"] = controller;
    return window;
}

/// Covers screens that this machine does not have.
- (NSRect)constrainFrameRect:(NSRect)frame toScreen:(NSScreen*)screen {
    return frame;
}

@end

/// Nothing but the chosen pane is in the window.
@implementation NSTabViewController (StandIn)

- (void)loadView {
    [self setView:[[NSView alloc] initWithFrame:NSMakeRect(0, 0, 100, 100)]];
    recordOf(self)[@"items"] = [NSMutableArray array];
}

- (NSArray*)tabViewItems {
    [self view];
    return recordOf(self)[@"items"];
}

- (void)addTabViewItem:(NSTabViewItem*)item {
    recordOf(item)[@"controller"] = [item viewController]; // here it does not own it
    [static_cast<NSMutableArray*>([self tabViewItems]) addObject:item];
    if ([[self tabViewItems] count] == 1)
        [self setSelectedTabViewItemIndex:0];
}

- (void)setSelectedTabViewItemIndex:(NSInteger)index {
    [[[[self view] subviews] lastObject] removeFromSuperview];
    NSView* pane = [[[self tabViewItems][static_cast<NSUInteger>(index)] viewController] view];
    [pane setAutoresizingMask:NSViewWidthSizable | NSViewHeightSizable];
    [pane setFrame:[[self view] bounds]];
    [[self view] addSubview:pane];
}

@end

/// Here it is laid out when it runs, and only then.
@implementation NSAlert (StandIn)

- (void)layout {
    NSStackView* column = [NSStackView stackViewWithViews:@[
        [NSTextField labelWithString:[self messageText]], [NSTextField labelWithString:[self informativeText]]
    ]];
    [column setOrientation:NSUserInterfaceLayoutOrientationVertical];
    for (NSButton* button in [self buttons])
        [column addArrangedSubview:button];
    [column setFrameSize:[column fittingSize]];
    recordOf(self)[@"window"] = makeWindow(column, NSTitledWindowMask);
}

- (id)window {
    return recordOf(self)[@"window"];
}

@end

/// A window of its own that closes together with the one it points at. While it shows, the system keeps it.
@implementation NSPopover (StandIn)

static NSMutableArray* shownPopovers() {
    static NSMutableArray* all = [NSMutableArray array];
    return all;
}

/// Here it would never let go of it.
- (void)setContentViewController:(NSViewController*)controller {
    recordOf(self)[@"content"] = controller;
}

- (void)showRelativeToRect:(NSRect)rect ofView:(NSView*)view preferredEdge:(NSRectEdge)side {
    NSViewController* content = recordOf(self)[@"content"];
    NSWindow* window = makeWindow([content view], NSBorderlessWindowMask);
    [window setTitle:@"popover"];
    [window orderFront:nil];
    recordOf(self)[@"window"] = window;
    [shownPopovers() addObject:self];
    [[NSNotificationCenter defaultCenter] addObserver:self
                                             selector:@selector(close)
                                                 name:NSWindowWillCloseNotification
                                               object:[view window]];
}

- (void)close {
    NSPopover* kept = self;
    [shownPopovers() removeObject:kept];
    [[NSNotificationCenter defaultCenter] removeObserver:kept];
    [recordOf(kept)[@"window"] close];
    [[kept delegate] popoverDidClose:[NSNotification notificationWithName:NSPopoverDidCloseNotification
                                                                   object:kept]];
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
    for (NSPopover* popover in [shownPopovers() copy])
        if ([popover behavior] == NSPopoverBehaviorTransient)
            [popover close];
    return nil;
}

@end

// --- The menu bar, and the application as others see it

@interface StatusItemStandIn : NSObject
@property(nonatomic) NSMenu* menu;
@property(nonatomic) NSButton* button;
@end

@implementation StatusItemStandIn
@end

static StatusItemStandIn* statusItem;

NSStatusItem* driver::statusItem() {
    return static_cast<NSStatusItem*>(static_cast<id>(::statusItem));
}

@implementation NSStatusBar (StandIn)

+ (NSStatusBar*)systemStatusBar {
    static NSStatusBar* bar = [[NSStatusBar alloc] init];
    return bar;
}

- (NSStatusItem*)statusItemWithLength:(CGFloat)length {
    statusItem = [[StatusItemStandIn alloc] init];
    [statusItem setButton:[NSButton buttonWithTitle:@"" target:nil action:nil]];
    note(@"status item", @{});
    return driver::statusItem();
}

@end

@implementation NSApplication (StandIn)

- (void)orderFrontStandardAboutPanelWithOptions:(NSDictionary*)options {
    NSAttributedString* credits = options[NSAboutPanelOptionCredits];
    NSURL* link = [credits attribute:NSLinkAttributeName atIndex:0 effectiveRange:nullptr];
    note(@"about", @{
        @"name" : options[NSAboutPanelOptionApplicationName],
        @"copyright" : options[@"Copyright"],
        @"credits" : [credits string],
        @"link" : [link absoluteString],
        @"icon" : @(options[NSAboutPanelOptionApplicationIcon] != nil),
    });
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
