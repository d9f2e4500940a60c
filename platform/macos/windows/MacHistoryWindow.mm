#import "platform/macos/windows/MacHistoryWindow.h"

#import "platform/macos/Bridge.h"
#import "platform/macos/views/HistoryPage.h"
#import "platform/macos/windows/WindowWatch.h"

namespace {

constexpr NSSize firstSize = {760, 620};
constexpr NSSize leastSize = {520, 440};

} // namespace

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
    watch_ = [[KelpaWindowWatch alloc] initWithFront:[this] { client_->cameToFront(); }
        closing:[this] {
            client_->closed();
            closed();
        }];
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
    KelpaWindowWatch* watch = watch_;
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
