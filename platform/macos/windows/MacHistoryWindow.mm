#import "platform/macos/windows/MacHistoryWindow.h"

#import "platform/macos/Bridge.h"
#import "platform/macos/views/HistoryPage.h"

namespace {

constexpr NSSize firstSize = {760, 620};
constexpr NSSize leastSize = {520, 440};

} // namespace

/// Tells when the window comes to the front and goes.
@interface KelpaHistoryWatch : NSObject <NSWindowDelegate>
- (instancetype)initWithWindow:(kelpa::MacHistoryWindow&)window client:(kelpa::HistoryWindowClient&)client;
@end

@implementation KelpaHistoryWatch {
    kelpa::MacHistoryWindow* _window;
    kelpa::HistoryWindowClient* _client;
}

- (instancetype)initWithWindow:(kelpa::MacHistoryWindow&)window client:(kelpa::HistoryWindowClient&)client {
    self = [super init];
    if (self) {
        _window = &window;
        _client = &client;
    }
    return self;
}

- (void)windowDidBecomeKey:(NSNotification*)notification {
    kelpa::callCore([&] { _client->cameToFront(); });
}

- (void)windowWillClose:(NSNotification*)notification {
    kelpa::callCore([&] { _client->closed(); });
    _window->closed();
}

@end

namespace kelpa {

void MacHistoryWindow::setTexts(const HistoryTexts& texts, HistoryWindowClient& client) {
    texts_ = texts;
    client_ = &client;
}

void MacHistoryWindow::makeWindow() {
    page_ = [[KelpaHistoryPage alloc] initWithTexts:texts_ client:*client_];
    const NSWindowStyleMask style = NSWindowStyleMaskTitled | NSWindowStyleMaskClosable |
                                    NSWindowStyleMaskMiniaturizable | NSWindowStyleMaskResizable;
    const NSRect frame = {NSZeroPoint, firstSize};
    window_ = [[NSWindow alloc] initWithContentRect:frame
                                          styleMask:style
                                            backing:NSBackingStoreBuffered
                                              defer:YES];
    [window_ setTitle:toNSString(texts_.title)];
    [window_ setReleasedWhenClosed:NO];
    [window_ setAutorecalculatesKeyViewLoop:YES];
    [window_ setContentMinSize:leastSize];
    [window_ setContentView:page_];
    watch_ = [[KelpaHistoryWatch alloc] initWithWindow:*this client:*client_];
    [window_ setDelegate:watch_];
    [window_ center];
}

void MacHistoryWindow::setPicture(const HistoryPicture& picture) {
    if (!window_)
        makeWindow();
    [page_ setPicture:picture];
}

void MacHistoryWindow::show() {
    [window_ makeKeyAndOrderFront:nil];
}

void MacHistoryWindow::closed() {
    // What is in the middle of its end is let go of a moment later.
    NSWindow* closing = window_;
    KelpaHistoryWatch* watch = watch_;
    window_ = nil;
    page_ = nil;
    watch_ = nil;
    dispatch_async(dispatch_get_main_queue(), ^{
      if ([closing delegate] == watch)
          [closing setDelegate:nil];
    });
}

void MacHistoryWindow::retire() {
    [window_ setDelegate:nil];
    [window_ close];
}

} // namespace kelpa
