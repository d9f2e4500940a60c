#pragma once

#include "platform/linux/display/Display.h"
#include "platform/linux/display/X11Connection.h"

#include <memory>
#include <optional>

namespace kelpa {

/// The monitors that RandR tells of, also the ones that a person defined over a part of an output.
class X11Screens final : public Screens {
  public:
    /// Loop and connection outlive the screens.
    X11Screens(EventLoop& loop, X11Connection& connection);
    [[nodiscard]] const Screen* mainScreen() override;

  private:
    [[nodiscard]] bool queryRandr();
    [[nodiscard]] std::vector<Monitor> monitors();
    [[nodiscard]] Monitor wholeRoot();
    [[nodiscard]] std::string atomName(xcb_atom_t atom);
    void handle(const xcb_generic_event_t& event);
    void askAgain();

    EventLoop& loop_;
    X11Connection& connection_;
    bool hasMonitors_ = false;
    std::uint8_t firstEvent_ = 0;
    Subscription burst_;
    Subscription events_;
};

/// Remembers the X window that has the input focus and gives it back.
class X11Focus final : public FocusMemory {
  public:
    /// The connection outlives the memory.
    explicit X11Focus(X11Connection& connection) : connection_(connection) {}
    void remember() override;
    void giveBack() override;

  private:
    struct Focus {
        xcb_window_t window;
        std::uint8_t revertTo;
    };
    [[nodiscard]] bool othersHaveIt();
    [[nodiscard]] bool canHaveFocus(xcb_window_t window);
    void activateTopmost();

    X11Connection& connection_;
    std::optional<Focus> kept_;
};

/// An X server.
class X11Display final : public Display {
  public:
    /// Null when none answers at $DISPLAY. `lost` runs once from the main loop when the server goes away.
    static std::unique_ptr<X11Display> open(EventLoop& loop, std::function<void()> lost);

    [[nodiscard]] Screens& screens() override { return screens_; }
    [[nodiscard]] FocusMemory& focus() override { return focus_; }
    [[nodiscard]] X11Connection* x11() override { return connection_.get(); }
    [[nodiscard]] WaylandConnection* wayland() override { return nullptr; }

  private:
    X11Display(EventLoop& loop, std::unique_ptr<X11Connection> connection);

    std::unique_ptr<X11Connection> connection_;
    X11Screens screens_;
    X11Focus focus_;
};

} // namespace kelpa
