#pragma once

#include "platform/linux/display/ScreenSource.h"
#include "platform/linux/helper/Message.h"

#include <chrono>
#include <functional>
#include <initializer_list>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace kelpa {

/// The way to the view; what is sent while no view runs is lost.
class ViewLink {
  public:
    virtual ~ViewLink() = default;
    virtual void send(std::initializer_list<std::string_view> fields) = 0;
    /// A window was shown or hidden.
    virtual void visibilityChanged() = 0;
};

/// Where a window stands.
struct WindowPlace {
    PixelRect pixels;
    std::string connector;
    bool operator==(const WindowPlace&) const = default;
};

/// From when on a view knows of a window.
enum class Presence {
    Always,     ///< at once, so that it is shown without delay
    WhileShown, ///< when it is shown and until it is hidden: most views never need it
};

/// All that a view has to know of one window. It is told of changes as they happen, and of everything again
/// when another view takes over from one that crashed or was given back.
class WindowRecord {
  public:
    /// `link` outlives the record or is taken from it with `leave()`.
    WindowRecord(ViewLink& link, int id, std::string kind, std::string title, WindowPlace place,
                 Presence presence = Presence::Always);
    WindowRecord(const WindowRecord&) = delete;
    WindowRecord& operator=(const WindowRecord&) = delete;

    [[nodiscard]] bool visible() const { return visible_; }
    [[nodiscard]] const std::string& connector() const { return place_.connector; }
    [[nodiscard]] const PixelRect& pixels() const { return place_.pixels; }
    [[nodiscard]] int id() const { return id_; }
    [[nodiscard]] Presence presence() const { return presence_; }
    /// Shown, and not on its way out.
    [[nodiscard]] bool staying() const { return visible_ && alpha_ > 0; }
    [[nodiscard]] const std::string& kind() const { return kind_; }
    [[nodiscard]] const std::string& title() const { return title_; }

    void setTitle(const std::string& title);
    void setPlace(const WindowPlace& place);
    /// A person moved the window, whose upper left corner is now there.
    void didMove(int x, int y);
    /// Only a value that differs is sent on. Needs no memory for one of the same length.
    void setProperty(std::string_view name, std::string_view value);
    /// The same, but sent on in any case: a person may have changed what the window shows.
    void assertProperty(std::string_view name, std::string_view value);
    /// Keeps a value that the view shows already: what a person made of it.
    void noteProperty(std::string_view name, std::string_view value) { store(name, value); }
    /// Says what a control shows. It is not kept: whoever says it does so again when another view takes over.
    void tell(std::string_view control, std::string_view field, std::string_view type,
              std::string_view value) const;
    void setAlpha(double alpha);
    void fadeTo(double alpha, double seconds);
    void show();
    void hide();
    /// The window is gone; everything else does nothing from now on.
    void leave();

    using ActionHandler = std::function<void(const std::string& action, const std::string& value)>;
    void setActionHandler(ActionHandler handler);
    /// Of what is done in a window that does not show, nothing is passed on.
    void didAct(const std::string& action, const std::string& value) const;
    /// Takes what a person did to controls, as the view says it.
    void setControlHandler(std::function<void(const wire::Message&)> handler);
    void didToControl(const wire::Message& message) const;
    /// Runs whenever a view is told everything, before it shows the window.
    void setReplayed(std::function<void()> run) { replayed_ = std::move(run); }

    /// Tells a view everything that it must know to go on from here.
    void replay() const;

  private:
    using Clock = std::chrono::steady_clock;
    template <typename... Values>
    void send(std::string_view verb, const Values&... values) const;
    void sendOpen() const;
    [[nodiscard]] bool known() const;
    bool store(std::string_view name, std::string_view value);
    [[nodiscard]] double opacityNow() const;
    void replayOpacity() const;

    ViewLink* link_;
    int id_;
    std::string idText_;
    Presence presence_;
    std::string kind_;
    std::string title_;
    WindowPlace place_;
    std::vector<std::pair<std::string, std::string>> properties_;
    bool visible_ = false;
    double alpha_ = 1;
    double fadeFrom_ = 1;
    Clock::time_point fadeStart_;
    Clock::duration fadeLength_{};
    ActionHandler handler_;
    std::function<void(const wire::Message&)> controlHandler_;
    std::function<void()> replayed_;
};

} // namespace kelpa
