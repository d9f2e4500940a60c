#import "platform/macos/windows/MacWindow.h"

#import "platform/macos/Bridge.h"
#import "platform/macos/views/MacBreakScreen.h"
#import "platform/macos/views/MacWaterPanel.h"

namespace kelpa {

MacWindow::MacWindow(const WindowSpec& spec, WindowSystemClient* client)
    : window_([[KelpaWindow alloc] initWithSpec:spec]) {
    if (!client || spec.style != WindowStyle::Panel)
        return;
    [window_ setDragged:^(NSRect frame) {
      const Rect place{frame.origin.x, frame.origin.y, frame.size.width, frame.size.height};
      callCore([client, place] { client->panelDragged(place); });
    }];
}

MacWindow::~MacWindow() {
    [window_ setDragged:nil];
    [window_ close];
}

std::unique_ptr<BreakScreenFace> MacWindow::hostBreakScreen(BreakScreenClient& client) {
    KelpaBreakView* view = [[KelpaBreakView alloc] initWithClient:client];
    [window_ host:view];
    return std::make_unique<MacBreakScreen>(view);
}

std::unique_ptr<WaterPanelFace> MacWindow::hostWaterPanel(WaterPanelClient& client) {
    KelpaWaterView* view = [[KelpaWaterView alloc] initWithClient:client];
    [window_ host:view];
    return std::make_unique<MacWaterPanel>(view);
}

void MacWindow::setAlpha(double alpha) {
    [window_ setAlphaValue:alpha];
}

void MacWindow::fadeTo(double alpha, double seconds, std::function<void()> done) {
    KelpaWindow* window = window_;
    [NSAnimationContext
        runAnimationGroup:^(NSAnimationContext* context) {
          [context setDuration:seconds];
          [[window animator] setAlphaValue:alpha];
        }
        completionHandler:^{
          if (done)
              callCore(done);
        }];
}

void MacWindow::orderFrontRegardless() {
    [window_ present];
}

void MacWindow::close() {
    [window_ close];
}

/// Its place alone says which screen a window is on.
void MacWindow::setFrame(const Rect& frame, std::uint32_t /*screen*/) {
    [window_ setPlace:toNSRect(frame)];
}

bool MacWindow::visible() const {
    return [window_ isVisible];
}

} // namespace kelpa
