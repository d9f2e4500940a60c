#pragma once

#import "platform/macos/windows/KelpaWindow.h"

namespace kelpa {

/// A native window over AppKit.
class MacWindow final : public NativeWindow {
  public:
    explicit MacWindow(const WindowSpec& spec) : window_([[KelpaWindow alloc] initWithSpec:spec]) {}
    ~MacWindow() override;
    MacWindow(const MacWindow&) = delete;
    MacWindow& operator=(const MacWindow&) = delete;

    std::unique_ptr<BreakScreenFace> hostBreakScreen(BreakScreenClient& client) override;
    std::unique_ptr<WaterPanelFace> hostWaterPanel(WaterPanelClient& client) override;
    void setAlpha(double alpha) override;
    void fadeTo(double alpha, double seconds, std::function<void()> done) override;
    void orderFrontRegardless() override;
    void close() override;
    void setFrame(const Rect& frame) override;
    [[nodiscard]] bool visible() const override;

  private:
    KelpaWindow* window_;
};

} // namespace kelpa
