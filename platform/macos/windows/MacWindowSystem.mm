#import "platform/macos/MacPorts.h"

#import "platform/macos/Bridge.h"
#import "platform/macos/views/Faces.h"

namespace kelpa {

namespace {

Screen screenOf(NSScreen* screen) {
    // Without a number (nobody has seen such a screen) it is 0.
    NSNumber* number = [[screen deviceDescription] objectForKey:@"NSScreenNumber"];
    const NSRect frame = [screen frame];
    return {[number unsignedIntValue],
            { frame.origin.x, frame.origin.y, frame.size.width, frame.size.height }};
}

/// While there is none, as on a laptop that wakes with its lid closed: of a common size, and with a number
/// that no display has.
Screen pretendedScreen() {
    return {UINT32_MAX, {0, 0, 1920, 1080}};
}

/// A native window over AppKit.
class MacWindow final : public NativeWindow {
  public:
    /// `client` outlives the window; null when nobody is to be told what a person does with it.
    MacWindow(const WindowSpec& spec, WindowSystemClient* client)
        : window_([[KelpaWindow alloc] initWithSpec:spec]) {
        if (client && spec.style == WindowStyle::Panel)
            [window_ setDragged:^(NSRect frame) {
              const Rect place{frame.origin.x, frame.origin.y, frame.size.width, frame.size.height};
              callCore([client, place] { client->panelDragged(place); });
            }];
    }
    ~MacWindow() override {
        [window_ setDragged:nil];
        [window_ close];
    }
    MacWindow(const MacWindow&) = delete;
    MacWindow& operator=(const MacWindow&) = delete;

    std::unique_ptr<BreakScreenFace> hostBreakScreen(BreakScreenClient& client) override {
        return makeBreakScreen(window_, client);
    }
    std::unique_ptr<WaterPanelFace> hostWaterPanel(WaterPanelClient& client) override {
        return makeWaterPanel(window_, client);
    }
    void setAlpha(double alpha) override { [window_ setAlphaValue:alpha]; }
    void fadeTo(double alpha, double seconds, std::function<void()> done) override {
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
    void orderFrontRegardless() override { [window_ present]; }
    void close() override { [window_ close]; }
    /// Its place alone says which screen a window is on.
    void setFrame(const Rect& frame, std::uint32_t /*screen*/) override {
        [window_ setPlace:toNSRect(frame)];
    }
    [[nodiscard]] bool visible() const override { return [window_ isVisible]; }

  private:
    KelpaWindow* window_;
};

class MacWindowSystem final : public WindowSystem {
  public:
    void setClient(WindowSystemClient& client) override {
        client_ = &client;
        WindowSystemClient* told = &client;
        // To the end of the process, so that nobody keeps what would end it.
        [[NSNotificationCenter defaultCenter]
            addObserverForName:NSApplicationDidChangeScreenParametersNotification
                        object:nil
                         queue:[NSOperationQueue mainQueue]
                    usingBlock:^(NSNotification*) {
                      callCore([told] { told->screensChanged(); });
                      [KelpaWindow restorePlaces];
                    }];
    }

    [[nodiscard]] std::vector<Screen> screens() const override {
        std::vector<Screen> all;
        for (NSScreen* screen in [NSScreen screens])
            all.push_back(screenOf(screen));
        if (all.empty())
            all.push_back(pretendedScreen());
        return all;
    }

    [[nodiscard]] const Screen* mainScreen() const override {
        NSScreen* screen = [NSScreen mainScreen];
        if (!screen)
            screen = [[NSScreen screens] firstObject];
        main_ = screen ? screenOf(screen) : pretendedScreen();
        return &main_;
    }

    std::unique_ptr<NativeWindow> makeWindow(const WindowSpec& spec) override {
        return std::make_unique<MacWindow>(spec, client_);
    }

    /// Nothing takes long to load here.
    void prepare() override {}

    void activate() override {
        [runningApplication() activateIgnoringOtherApps:YES];
        // The keyboard goes to what was just shown, also when another window of ours had it.
        [[KelpaWindow takePresented] makeKeyWindow];
    }

    void deactivate() override { [runningApplication() deactivate]; }

  private:
    WindowSystemClient* client_ = nullptr;
    mutable Screen main_; ///< what `mainScreen` answered last
};

} // namespace

std::unique_ptr<WindowSystem> makeMacWindowSystem() {
    return std::make_unique<MacWindowSystem>();
}

} // namespace kelpa
