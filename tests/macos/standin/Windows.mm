// Screens, windows, tabs, popovers and the menu bar.
#import <AppKit/AppKit.h>

#include "tests/macos/runtime/Objects.h"
#import "tests/macos/standin/StandIns.h"

NSString* const NSAboutPanelOptionCredits = @"Credits";
NSString* const NSAboutPanelOptionApplicationName = @"ApplicationName";
NSString* const NSAboutPanelOptionApplicationIcon = @"ApplicationIcon";
NSString* const NSImageNameApplicationIcon = @"Kelpa"; // a file of the bundle

namespace {

using KeyDown = void (*)(id, SEL, NSEvent*);
KeyDown keyDownOfWindow = nullptr;

/// Escape that nothing else took asks for the end of what is going on.
void keyDown(NSWindow* window, SEL selector, NSEvent* event) {
    if ([[event characters] isEqual:@"\033"])
        [[window firstResponder] doCommandBySelector:@selector(cancelOperation:)];
    else
        keyDownOfWindow(window, selector, event);
}

} // namespace

@interface ScreenStandIn : NSScreen
@end

@implementation ScreenStandIn {
    NSRect _rect;
    NSNumber* _number;
}

+ (void)load {
    keyDownOfWindow = reinterpret_cast<KeyDown>(
        replaceMethod("NSWindow", @selector(keyDown:), reinterpret_cast<void*>(keyDown)));
    ignoreMessages(
        "NSWindow",
        "setTitlebarAppearsTransparent: setTitlebarSeparatorStyle: setAnimationBehavior: setToolbarStyle:");
    ignoreMessages("NSApplication", "addWindowsItem:title:filename:");
}

+ (instancetype)screenWithRect:(NSRect)rect number:(NSNumber*)number {
    ScreenStandIn* screen = [self alloc];
    screen->_rect = rect;
    screen->_number = number;
    return screen;
}

- (NSRect)frame {
    return _rect;
}

- (NSRect)visibleFrame {
    return _rect;
}

- (NSDictionary*)deviceDescription {
    return @{@"NSScreenNumber" : _number};
}

/// For the windows of this machine.
- (int)screenNumber {
    return 0;
}

@end

namespace {

NSMutableArray<NSScreen*>* screens() {
    static NSMutableArray* all =
        [NSMutableArray arrayWithObject:[ScreenStandIn screenWithRect:NSMakeRect(0, 0, 800, 600) number:@1]];
    return all;
}

} // namespace

void standin::setScreens(NSArray* list) {
    [screens() removeAllObjects];
    for (NSArray* each in list)
        [screens()
            addObject:[ScreenStandIn screenWithRect:NSMakeRect([each[1] doubleValue], [each[2] doubleValue],
                                                               [each[3] doubleValue], [each[4] doubleValue])
                                             number:each[0]]];
}

@implementation NSScreen (StandIn)

+ (NSArray*)screens {
    return [screens() copy];
}

+ (NSScreen*)mainScreen {
    return [screens() firstObject];
}

@end

@implementation NSWindow (StandIn)

+ (instancetype)windowWithContentViewController:(NSViewController*)controller {
    NSWindow* window = [[NSWindow alloc]
        initWithContentRect:[[controller view] frame]
                  styleMask:NSWindowStyleMaskTitled | NSWindowStyleMaskClosable | NSWindowStyleMaskResizable
                    backing:NSBackingStoreBuffered
                      defer:NO];
    [window setContentView:[controller view]];
    [recordOf(window) setObject:controller forKey:@"controller"];
    return window;
}

/// Covers screens that this machine does not have.
- (NSRect)constrainFrameRect:(NSRect)frame toScreen:(NSScreen*)screen {
    return frame;
}

@end

@implementation NSTabViewController (StandIn)

- (void)loadView {
    [self setView:[[NSView alloc] initWithFrame:NSMakeRect(0, 0, 100, 100)]];
}

- (NSMutableArray*)items {
    if (![recordOf(self) objectForKey:@"items"])
        [recordOf(self) setObject:[NSMutableArray array] forKey:@"items"];
    return [recordOf(self) objectForKey:@"items"];
}

- (NSArray*)tabViewItems {
    return [[self items] copy];
}

- (void)addTabViewItem:(NSTabViewItem*)item {
    [recordOf(item) setObject:[item viewController] forKey:@"controller"]; // here it does not own it
    [[self items] addObject:item];
    if ([[self items] count] == 1)
        [self setSelectedTabViewItemIndex:0];
}

/// Nothing but the chosen pane is in the window.
- (void)setSelectedTabViewItemIndex:(NSInteger)index {
    for (NSView* before in [[[self view] subviews] copy])
        [before removeFromSuperview];
    NSView* pane = [[[[self items] objectAtIndex:static_cast<NSUInteger>(index)] viewController] view];
    [pane setAutoresizingMask:NSViewWidthSizable | NSViewHeightSizable];
    [pane setFrame:[[self view] bounds]];
    [[self view] addSubview:pane];
    [recordOf(self) setObject:@(index) forKey:@"chosen"];
}

- (NSInteger)selectedTabViewItemIndex {
    return [[recordOf(self) objectForKey:@"chosen"] integerValue];
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
    NSWindow* window = [[NSWindow alloc] initWithContentRect:NSMakeRect(0, 0, 400, 200)
                                                   styleMask:NSTitledWindowMask
                                                     backing:NSBackingStoreBuffered
                                                       defer:NO];
    [window setContentView:column];
    [recordOf(self) setObject:window forKey:@"window"];
}

- (id)window {
    return [recordOf(self) objectForKey:@"window"];
}

@end

namespace {

/// Those that are on the screen, which the system keeps until they are closed.
NSMutableArray<NSPopover*>* popovers() {
    static NSMutableArray* all = [NSMutableArray array];
    return all;
}

} // namespace

/// A window of its own that closes together with the one it points at.
@implementation NSPopover (StandIn)

/// Here it would never let go of it.
- (void)setContentViewController:(NSViewController*)controller {
    recordOf(self)[@"content"] = controller;
}

- (NSViewController*)contentViewController {
    return recordOf(self)[@"content"];
}

- (void)showRelativeToRect:(NSRect)rect ofView:(NSView*)view preferredEdge:(NSRectEdge)side {
    NSView* content = [[self contentViewController] view];
    NSWindow* window = [[NSWindow alloc] initWithContentRect:[content frame]
                                                   styleMask:NSBorderlessWindowMask
                                                     backing:NSBackingStoreBuffered
                                                       defer:NO];
    [window setReleasedWhenClosed:NO];
    [window setTitle:@"popover"];
    [window setContentView:content];
    [window orderFront:nil];
    [recordOf(self) setObject:window forKey:@"window"];
    [popovers() addObject:self];
    [[NSNotificationCenter defaultCenter] addObserver:self
                                             selector:@selector(close)
                                                 name:NSWindowWillCloseNotification
                                               object:[view window]];
}

- (void)close {
    if (![popovers() containsObject:self])
        return;
    NSPopover* kept = self;
    [popovers() removeObject:kept];
    [[NSNotificationCenter defaultCenter] removeObserver:kept];
    [[recordOf(kept) objectForKey:@"window"] close];
    [recordOf(kept) removeObjectForKey:@"window"];
    [[kept delegate] popoverDidClose:[NSNotification notificationWithName:NSPopoverDidCloseNotification
                                                                   object:kept]];
}

- (BOOL)isShown {
    return [popovers() containsObject:self];
}

@end

void standin::clickBesidePopovers() {
    for (NSPopover* popover in [popovers() copy])
        if ([popover behavior] == NSPopoverBehaviorTransient)
            [popover close];
}

@interface StatusItemStandIn : NSObject
@property(nonatomic) NSMenu* menu;
@property(nonatomic, readonly) NSButton* button;
@end

@implementation StatusItemStandIn

- (instancetype)init {
    self = [super init];
    if (self)
        _button = [NSButton buttonWithTitle:@"" target:nil action:nil];
    return self;
}

@end

namespace {

StatusItemStandIn* statusItem_;

} // namespace

NSButton* standin::statusButton() {
    return [statusItem_ button];
}

NSMenu* standin::statusMenu() {
    return [statusItem_ menu];
}

@implementation NSStatusBar (StandIn)

+ (NSStatusBar*)systemStatusBar {
    static NSStatusBar* bar = [[NSStatusBar alloc] init];
    return bar;
}

- (NSStatusItem*)statusItemWithLength:(CGFloat)length {
    statusItem_ = [[StatusItemStandIn alloc] init];
    note(@"status item", @{});
    return static_cast<NSStatusItem*>(static_cast<id>(statusItem_));
}

@end

@implementation NSApplication (StandIn)

- (void)orderFrontStandardAboutPanelWithOptions:(NSDictionary*)options {
    NSAttributedString* credits = [options objectForKey:NSAboutPanelOptionCredits];
    NSURL* link = [credits attribute:NSLinkAttributeName atIndex:0 effectiveRange:nullptr];
    note(@"about", @{
        @"name" : [options objectForKey:NSAboutPanelOptionApplicationName],
        @"copyright" : [options objectForKey:@"Copyright"],
        @"credits" : [credits string],
        @"link" : [link absoluteString],
        @"icon" : @([options objectForKey:NSAboutPanelOptionApplicationIcon] != nil),
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
