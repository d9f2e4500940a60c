#import "platform/macos/windows/MacWindow.h"

#import "platform/macos/Bridge.h"
#import "platform/macos/views/MacBreakScreen.h"
#import "platform/macos/views/MacWaterPanel.h"

namespace kelpa {

MacWindow::~MacWindow() {
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

void MacWindow::setFrame(const Rect& frame) {
    [window_ setPlace:toNSRect(frame)];
}

bool MacWindow::visible() const {
    return [window_ isVisible];
}

} // namespace kelpa
