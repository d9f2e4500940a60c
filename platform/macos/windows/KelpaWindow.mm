#import "platform/macos/windows/KelpaWindow.h"

#import <QuartzCore/QuartzCore.h>

#import "platform/macos/Bridge.h"
#import "ui/Window.h"

namespace {

NSWindowStyleMask styleMask(kelpa::WindowStyle style) {
    if (style == kelpa::WindowStyle::FullSizeContent)
        return NSWindowStyleMaskFullSizeContentView;
    return NSWindowStyleMaskTitled | NSWindowStyleMaskClosable | NSWindowStyleMaskFullSizeContentView;
}

/// Waits for the keyboard, which goes to it when the application becomes the active one.
__weak KelpaWindow* presented;

} // namespace

@implementation KelpaWindow {
    NSTimeInterval _deafSeconds;
    NSTimeInterval _deafUntil;
    NSRect _place;
    BOOL _coversScreen;
    BOOL _placed;    ///< by the program, at this moment
    BOOL _held;      ///< by a person who drags it
    BOOL _untouched; ///< since it was shown no key and no click came that counts
    __weak NSView<KelpaContent>* _content;
}

- (instancetype)initWithSpec:(const kelpa::WindowSpec&)spec {
    const kelpa::WindowStyle style = spec.style;
    self = [super initWithContentRect:kelpa::toNSRect(spec.frame)
                            styleMask:styleMask(style)
                              backing:NSBackingStoreBuffered
                                defer:NO];
    if (!self)
        return nil;
    _deafSeconds = kelpa::deafSeconds(style);
    _place = kelpa::toNSRect(spec.frame);
    _coversScreen = style == kelpa::WindowStyle::FullSizeContent;
    [self setOpaque:NO];
    [self setReleasedWhenClosed:NO];
    [self setBackgroundColor:[NSColor clearColor]];
    [self setLevel:spec.level];
    [self setCollectionBehavior:NSWindowCollectionBehaviorCanJoinAllSpaces];
    [self setTitle:kelpa::toNSString(spec.title)];
    // The only animation is the core's own fading.
    [self setAnimationBehavior:NSWindowAnimationBehaviorNone];
    // The views come later, and some of them come and go.
    [self setAutorecalculatesKeyViewLoop:YES];
    if (style == kelpa::WindowStyle::Panel)
        [self becomePanel];
    [self setDelegate:self];
    [NSApp addWindowsItem:self title:[self title] filename:NO];
    return self;
}

- (void)becomePanel {
    [self setTitlebarSeparatorStyle:NSTitlebarSeparatorStyleNone];
    [self setTitlebarAppearsTransparent:YES];
    [self setMovableByWindowBackground:YES];
}

- (void)host:(NSView<KelpaContent>*)content {
    NSView* parent = [self contentView];
    [content setFrame:[parent bounds]];
    [content setAutoresizingMask:NSViewWidthSizable | NSViewHeightSizable];
    [parent addSubview:content];
    _content = content;
}

- (void)setPlace:(NSRect)place {
    _place = place;
    _placed = YES;
    [self setFrame:place display:YES];
    _placed = NO;
    _held = NO;
}

- (void)windowWillMove:(NSNotification*)notification {
    _held = !_placed;
}

- (void)windowDidMove:(NSNotification*)notification {
    if (_held && _dragged)
        _dragged([self frame]);
}

/// The system moves the windows of a lost screen onto another one, and need not bring them back. A window
/// that can be dragged stays where it is.
- (void)restorePlace {
    if (_coversScreen && !NSEqualRects([self frame], _place))
        [self setFrame:_place display:YES];
}

+ (void)restorePlaces {
    for (NSWindow* window in [NSApp windows])
        if ([window isKindOfClass:[KelpaWindow class]] && [window isVisible])
            [static_cast<KelpaWindow*>(window) restorePlace];
}

- (void)present {
    _deafUntil = CACurrentMediaTime() + _deafSeconds;
    _untouched = YES;
    [self restorePlace];
    [self orderFrontRegardless];
    presented = self;
}

/// While a break covers the screens, keys go to it: what was shown beneath would take them unseen.
+ (KelpaWindow*)takePresented {
    KelpaWindow* window = presented;
    presented = nil;
    KelpaWindow* covering = window && !window->_coversScreen ? [self coveringWindow] : nil;
    return covering ? covering : window;
}

+ (KelpaWindow*)coveringWindow {
    for (NSWindow* window in [NSApp windows])
        if ([window isKindOfClass:[KelpaWindow class]] && [window isVisible] &&
            static_cast<KelpaWindow*>(window)->_coversScreen)
            return static_cast<KelpaWindow*>(window);
    return nil;
}

/// No button is the one that a key would press. The system chooses one when it first shows a window or gives
/// it the keyboard, and nothing says in which order, so that the choice is undone at the first key that
/// counts.
- (void)chooseNoButton {
    if (_untouched)
        [self makeFirstResponder:nil];
    _untouched = NO;
}

- (void)becomeKeyWindow {
    [super becomeKeyWindow];
    if (_untouched)
        [self makeFirstResponder:nil];
}

/// Windows without a title bar do not, unless they say so.
- (BOOL)canBecomeKeyWindow {
    return YES;
}

- (BOOL)isDeaf {
    return CACurrentMediaTime() < _deafUntil;
}

- (void)sendEvent:(NSEvent*)event {
    const BOOL key = [event type] == NSEventTypeKeyDown;
    if (key && [self isDeaf])
        return;
    if (key)
        [self chooseNoButton];
    else if ([event type] == NSEventTypeLeftMouseDown)
        _untouched = NO;
    [super sendEvent:event];
}

/// What counts as answered goes no further, the main menu included.
- (BOOL)performKeyEquivalent:(NSEvent*)event {
    return [self isDeaf] || [super performKeyEquivalent:event];
}

/// A key that means nothing here makes no sound: a person who types on into a break has done nothing wrong.
- (void)noResponderFor:(SEL)eventSelector {
}

- (void)cancelOperation:(id)sender {
    [_content windowWantsToClose];
}

/// What becomes of the window is the core's decision.
- (BOOL)windowShouldClose:(NSWindow*)sender {
    [_content windowWantsToClose];
    return NO;
}

@end
