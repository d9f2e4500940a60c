#pragma once

#import "platform/macos/windows/KelpaWindow.h"

namespace kelpa {

/// A native window over AppKit.
class MacWindow final : public NativeWindow {
  public:
    /// `client` outlives the window; null when nobody is to be told what a person does with it.
    MacWindow(const WindowSpec& spec, WindowSystemClient* client);
    ~MacWindow() override;
    MacWindow(const MacWindow&) = delete;
    MacWindow& operator=(const MacWindow&) = delete;

    std::unique_ptr<BreakScreenFace> hostBreakScreen(BreakScreenClient& client) override;
    std::unique_ptr<WaterPanelFace> hostWaterPanel(WaterPanelClient& client) override;
    void setAlpha(double alpha) override;
    void fadeTo(double alpha, double seconds, std::function<void()> done) override;
    void orderFrontRegardless() override;
    void close() override;
    void setFrame(const Rect& frame, std::uint32_t screen) override;
    [[nodiscard]] bool visible() const override;

  private:
    KelpaWindow* window_;
};

} // namespace kelpa
