#pragma once

#include "platform/linux/EventLoop.h"
#include "platform/linux/display/Display.h"
#include "platform/linux/helper/HelperProcess.h"
#include "platform/linux/windows/RemoteWindow.h"

#include <limits>
#include <map>
#include <memory>
#include <vector>

namespace kelpa {

/// What the window system works with; all of it outlives the window system.
struct WindowSystemParts {
    EventLoop& loop;
    Screens& screens;
    FocusMemory& focus;
    WindowReport& report;
    /// How long a view that shows nothing is kept, in real seconds.
    double idleSeconds = 20;
};

/// Windows drawn by `kelpa-view`, a process that runs only while something is shown and shortly before and
/// after, so that the program itself stays small. Without that process, everything here goes on by the clock.
class RemoteWindowSystem final : public WindowSystem, public OwnWindows, private HelperClient {
  public:
    /// `program` is the path of `kelpa-view`.
    RemoteWindowSystem(const WindowSystemParts& parts, std::string program);
    ~RemoteWindowSystem() override;
    RemoteWindowSystem(const RemoteWindowSystem&) = delete;
    RemoteWindowSystem& operator=(const RemoteWindowSystem&) = delete;

    void setClient(WindowSystemClient& client) override { client_ = &client; }
    [[nodiscard]] std::vector<Screen> screens() const override { return parts_.screens.all(); }
    [[nodiscard]] const Screen* mainScreen() const override { return parts_.screens.mainScreen(); }
    std::unique_ptr<NativeWindow> makeWindow(const WindowSpec& spec) override;
    void prepare() override;
    void activate() override;
    void deactivate() override;

    /// A window that the desktop's window manager looks after; nobody sees it yet.
    [[nodiscard]] std::unique_ptr<RemoteWindow> makeManaged(std::string_view kind, const std::string& title);

    [[nodiscard]] int viewPid() const override { return view_.pid(); }
    [[nodiscard]] bool anyVisible() const override;
    [[nodiscard]] bool coverEveryScreen() const override;
    [[nodiscard]] double secondsSinceInput() const override;

    // For the windows.
    [[nodiscard]] EventLoop& loop() { return parts_.loop; }
    [[nodiscard]] const Screens& layout() const { return parts_.screens; }
    [[nodiscard]] wire::Connection& view() { return view_; }
    /// Counts a window in, which has to be forgotten or left before its end, and gives it a number.
    int join(RemoteWindow& window);
    void forget(RemoteWindow& window);
    /// A window was shown or hidden.
    void visibilityChanged();
    /// A person moved the window.
    void didDrag(const RemoteWindow& window);

  private:
    void helperSaid(const wire::Message& message) override;
    void helperFailed(const std::string& how) override;

    void screensChanged();
    [[nodiscard]] bool anyTakesFocus() const;
    void startView();
    void replay();
    void reserveBreakWindows();
    void endView();
    void reportFailure(const std::string& text);

    WindowSystemParts parts_;
    HelperProcess view_;
    WindowSystemClient* client_ = nullptr;
    std::vector<RemoteWindow*> windows_;
    /// Windows that the view made ready for screens that had none yet, by the number of the screen.
    std::map<std::uint32_t, std::unique_ptr<RemoteWindow>> reserved_;
    int lastId_ = 0;
    bool active_ = false;
    bool failing_ = false;
    /// When a person last used a window, as the view tells.
    double usedAt_ = -std::numeric_limits<double>::infinity();
    RestartBudget restarts_;
    Subscription idle_;
};

} // namespace kelpa
