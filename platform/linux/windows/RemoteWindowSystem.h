#pragma once

#include "base/Published.h"
#include "platform/linux/display/OwnWindows.h"
#include "platform/linux/display/ScreenSource.h"
#include "platform/linux/display/WindowReport.h"
#include "platform/linux/helper/AnswerWatch.h"
#include "platform/linux/helper/HelperProcess.h"
#include "platform/linux/helper/RestartBudget.h"
#include "platform/linux/windows/RemoteWindow.h"

#include <limits>
#include <map>
#include <memory>
#include <vector>

namespace kelpa {

/// What the window system works with; all of it outlives the window system.
struct WindowSystemParts {
    EventLoop& loop;
    ScreenSource& screens;
    FocusMemory& focus;
    WindowReport& report;
    /// How long a view that shows nothing is kept, in real seconds.
    double idleSeconds = 20;
};

/// Windows drawn by `kelpa-view`, a process that runs only while something is shown and shortly before and
/// after, so that the program itself stays small. Without that process, everything here goes on by the clock.
class RemoteWindowSystem final : public WindowSystem,
                                 public OwnWindows,
                                 private ViewLink,
                                 private HelperClient,
                                 private AnswerWatchClient,
                                 private RemoteWindowHome {
  public:
    /// `program` is the path of `kelpa-view`.
    RemoteWindowSystem(const WindowSystemParts& parts, std::string program);
    ~RemoteWindowSystem() override;
    RemoteWindowSystem(const RemoteWindowSystem&) = delete;
    RemoteWindowSystem& operator=(const RemoteWindowSystem&) = delete;

    void setClient(WindowSystemClient& client) override;
    [[nodiscard]] std::vector<Screen> screens() const override { return parts_.screens.screens(); }
    [[nodiscard]] const Screen* mainScreen() const override { return parts_.screens.mainScreen(); }
    std::unique_ptr<NativeWindow> makeWindow(const WindowSpec& spec) override;
    void prepare() override;
    void activate() override;
    void deactivate() override;

    /// A window that the desktop's window manager looks after; nobody sees it yet.
    [[nodiscard]] std::shared_ptr<WindowRecord> makeManaged(std::string_view kind, const std::string& title);
    /// Shows such a window, at first on the main screen; one that is shown comes to the front.
    void showManaged(WindowRecord& window);

    [[nodiscard]] int viewPid() const override { return view_.pid(); }
    [[nodiscard]] bool anyVisible() const override;
    [[nodiscard]] bool coverEveryScreen() const override;
    [[nodiscard]] double secondsSinceInput() const override;

  private:
    void send(std::initializer_list<std::string_view> fields) override;
    void visibilityChanged() override;

    void helperSaid(const wire::Message& message) override;
    void helperFailed(const std::string& how) override;

    void readAnswers() override { view_.takeIn(); }
    [[nodiscard]] bool helperBusy() const override;
    void ask() override;
    void helperHangs(double seconds) override;

    EventLoop& loop() override { return parts_.loop; }
    [[nodiscard]] WindowPlace place(const Rect& frame, std::uint32_t screen) const override;
    std::shared_ptr<WindowRecord> record(const WindowSpec& spec, std::string_view kind) override;
    void forget(const std::shared_ptr<WindowRecord>& record) override;
    Subscription observeScreens(std::function<void()> told) override {
        return screensChanged_.add(std::move(told));
    }

    [[nodiscard]] bool anyTakesFocus() const;
    std::shared_ptr<WindowRecord> makeRecord(std::string_view kind, const std::string& title,
                                             const WindowPlace& place, Presence presence = Presence::Always);
    void startView();
    void replay();
    void reserveBreakWindows();
    void endView();
    void reportFailure(const std::string& text);
    void didAct(const wire::Message& message);
    void didDrag(const wire::Message& message);
    /// The window that a message of the view is about; null for one that is gone.
    [[nodiscard]] std::shared_ptr<WindowRecord> recordOf(const wire::Message& message) const;

    WindowSystemParts parts_;
    /// Owns nothing: windows see by it whether the system is still there.
    std::shared_ptr<RemoteWindowHome> home_;
    HelperProcess view_;
    AnswerWatch answers_;
    WindowSystemClient* client_ = nullptr;
    Listeners<> screensChanged_;
    std::vector<std::shared_ptr<WindowRecord>> records_;
    /// Windows that the view made ready for screens that had none yet, by the number of the screen.
    std::map<std::uint32_t, std::shared_ptr<WindowRecord>> reserved_;
    int nextId_ = 1;
    bool active_ = false;
    bool failing_ = false;
    /// When a person last used a window, as the view tells.
    double usedAt_ = -std::numeric_limits<double>::infinity();
    RestartBudget restarts_;
    Subscription idle_;
};

} // namespace kelpa
