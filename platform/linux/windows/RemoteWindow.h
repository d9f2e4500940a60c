#pragma once

#include "base/Published.h"
#include "platform/linux/display/Screens.h"
#include "platform/linux/helper/Connection.h"
#include "platform/ports/WindowSystem.h"

#include <functional>
#include <list>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kelpa {

class RemoteWindowSystem;

/// Whose place on the desktop it is.
enum class Placing {
    Ours,           ///< exactly where the core wants it, and made ready before it is shown
    WindowManagers, ///< on the main screen at first; the view knows of it only while it is shown
};

/// A window that another process draws: all that this process, the view, has to know of it. It is told of
/// changes as they happen, and of everything again when another view takes over. Fades end here by the clock,
/// whatever the view does.
class RemoteWindow final : public NativeWindow, public wire::Addressee {
  public:
    /// A window of some kind that the view knows. Without its system, once that is gone, it does nothing.
    RemoteWindow(RemoteWindowSystem& system, std::string_view kind, const WindowSpec& spec, Placing placing);
    ~RemoteWindow() override;
    RemoteWindow(const RemoteWindow&) = delete;
    RemoteWindow& operator=(const RemoteWindow&) = delete;

    /// The window outlives these faces.
    std::unique_ptr<BreakScreenFace> hostBreakScreen(BreakScreenClient& client) override;
    std::unique_ptr<WaterPanelFace> hostWaterPanel(WaterPanelClient& client) override;
    void setAlpha(double alpha) override;
    void fadeTo(double alpha, double seconds, std::function<void()> done) override;
    void orderFrontRegardless() override;
    void close() override;
    void setFrame(const Rect& frame, std::uint32_t screen) override;
    [[nodiscard]] bool visible() const override { return visible_; }
    /// Takes what the view says of the window, and what a person did in it while it is shown.
    void hear(const wire::Message& message) override;

    void setTitle(const std::string& title);
    /// Only a value that differs is sent on. Needs no memory for one of the same length.
    void setProperty(std::string_view name, std::string_view value);
    /// The same, but sent on in any case: a person may have changed what the window shows.
    void assertProperty(std::string_view name, std::string_view value);
    /// Keeps a value that the view shows already: what a person made of it.
    void noteProperty(std::string_view name, std::string_view value) { store(name, value); }
    using ActionHandler = std::function<void(const std::string& action, const std::string& value)>;
    /// Is given what a person does in the window while it is shown.
    void setActionHandler(ActionHandler handler) { handler_ = std::move(handler); }
    /// Runs `run` whenever a view is told everything, before it shows the window.
    void setReplayed(std::function<void()> run) { replayed_ = std::move(run); }

    /// The number by which it and its window in the view speak to each other.
    [[nodiscard]] int id() const { return id_; }

    // For the window system.
    [[nodiscard]] const std::string& kind() const { return kind_; }
    [[nodiscard]] const std::string& title() const { return spec_.title; }
    [[nodiscard]] const std::string& connector() const { return connector_; }
    [[nodiscard]] const PixelRect& pixels() const { return pixels_; }
    [[nodiscard]] Placing placing() const { return placing_; }
    /// Shown, and not on its way out.
    [[nodiscard]] bool staying() const { return visible_ && alpha_ > 0; }
    /// Takes the place that the frame has on the screens as they are now.
    void place();
    /// Tells a view everything that it must know to go on from here.
    void replay() const;
    /// The system is gone.
    void leave() { system_ = nullptr; }

  private:
    void didAct(const std::string& action, const std::string& value) const;
    void didClose(const wire::Message& message);
    void didDrag(const wire::Message& message);
    template <typename... Values>
    void send(std::string_view verb, const Values&... values) const;
    void sendOpen() const;
    void sendDrop() const;
    /// Whether a view that runs knows of the window.
    [[nodiscard]] bool known() const;
    bool store(std::string_view name, std::string_view value);
    void setPlace(const PixelRect& pixels, const std::string& connector);
    void sendAlpha(double alpha);
    void startFade(double alpha, double seconds);
    [[nodiscard]] double opacityNow() const;
    void replayOpacity() const;

    RemoteWindowSystem* system_; ///< null once it is gone
    int id_;
    std::string idText_;
    std::string kind_;
    WindowSpec spec_;
    Placing placing_;
    PixelRect pixels_;
    std::string connector_;
    std::vector<std::pair<std::string, std::string>> properties_;
    ActionHandler handler_;
    std::function<void()> replayed_;
    bool visible_ = false;
    double alpha_ = 1;
    double fadeFrom_ = 1;
    double fadeEnd_ = 0; ///< on the monotonic clock
    double fadeSeconds_ = 0;
    std::list<Subscription> fades_;
    Subscription alphaLater_;
};

} // namespace kelpa
