#pragma once

#include "platform/linux/EventLoop.h"
#include "platform/linux/windows/WindowRecord.h"
#include "platform/ports/WindowSystem.h"

#include <list>
#include <memory>

namespace kelpa {

/// What a window needs of the system that made it.
class RemoteWindowHome {
  public:
    virtual ~RemoteWindowHome() = default;
    virtual EventLoop& loop() = 0;
    [[nodiscard]] virtual WindowPlace place(const Rect& frame, std::uint32_t screen) const = 0;
    /// Makes the record for a window's content, or hands out the one that was prepared for it.
    virtual std::shared_ptr<WindowRecord> record(const WindowSpec& spec, std::string_view kind) = 0;
    virtual void forget(const std::shared_ptr<WindowRecord>& record) = 0;
    /// Told when the same frame may be another place on the desktop.
    virtual Subscription observeScreens(std::function<void()> told) = 0;
};

/// A window that another process draws. Fades end here by the clock, whatever that process does.
class RemoteWindow final : public NativeWindow {
  public:
    /// Does nothing any more once `home` is gone.
    RemoteWindow(std::weak_ptr<RemoteWindowHome> home, const WindowSpec& spec);
    ~RemoteWindow() override;
    RemoteWindow(const RemoteWindow&) = delete;
    RemoteWindow& operator=(const RemoteWindow&) = delete;

    std::unique_ptr<BreakScreenFace> hostBreakScreen(BreakScreenClient& client) override;
    std::unique_ptr<WaterPanelFace> hostWaterPanel(WaterPanelClient& client) override;
    void setAlpha(double alpha) override;
    void fadeTo(double alpha, double seconds, std::function<void()> done) override;
    void orderFrontRegardless() override;
    void close() override;
    void setFrame(const Rect& frame, std::uint32_t screen) override;
    [[nodiscard]] bool visible() const override { return record_ && record_->visible(); }

  private:
    /// Gives the window a content of a kind; false where the system is gone.
    bool fill(std::string_view kind);
    void place();
    void leave();

    std::weak_ptr<RemoteWindowHome> home_;
    WindowSpec spec_;
    std::shared_ptr<WindowRecord> record_; ///< null until the window has a content
    Subscription screens_;
    std::list<Subscription> fades_;
    Subscription alphaLater_;
};

} // namespace kelpa
