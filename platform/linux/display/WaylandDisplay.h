#pragma once

#include "platform/linux/display/Display.h"
#include "platform/linux/display/WaylandConnection.h"

#include <memory>
#include <vector>

struct wl_output;
struct zxdg_output_manager_v1;
struct zxdg_output_v1;

namespace kelpa {

/// The outputs that a Wayland compositor tells of, in the order in which it does: which one a person thinks
/// of as the first, and which has the keyboard, it keeps to itself.
class WaylandScreens final : public Screens, private WaylandGlobals {
  public:
    /// Loop and connection outlive the screens.
    WaylandScreens(EventLoop& loop, WaylandConnection& connection);
    ~WaylandScreens() override;

  private:
    struct Destroy {
        void operator()(wl_output* output) const;
        void operator()(zxdg_output_v1* output) const;
        void operator()(zxdg_output_manager_v1* manager) const;
    };
    template <typename Object>
    using Owned = std::unique_ptr<Object, Destroy>;
    class Output;

    void came(const WaylandGlobal& global) override;
    void went(std::uint32_t number) override;
    [[nodiscard]] std::vector<Monitor> monitors() const;
    void changedSoon();
    void askAgain();

    EventLoop& loop_;
    WaylandConnection& connection_;
    Owned<zxdg_output_manager_v1> manager_; ///< null where the compositor has none
    std::vector<std::unique_ptr<Output>> outputs_;
    Subscription burst_;
    Subscription globals_;
};

/// The compositor gives the keyboard back by itself when a window that had it goes.
class CompositorKeepsFocus final : public FocusMemory {
  public:
    void remember() override {}
    void giveBack() override {}
};

/// A Wayland compositor.
class WaylandDisplay final : public Display {
  public:
    /// Null when none answers at $WAYLAND_DISPLAY. `lost` runs once from the main loop when it goes away.
    static std::unique_ptr<WaylandDisplay> open(EventLoop& loop, std::function<void()> lost);

    [[nodiscard]] Screens& screens() override { return screens_; }
    [[nodiscard]] FocusMemory& focus() override { return focus_; }
    [[nodiscard]] X11Connection* x11() override { return nullptr; }
    [[nodiscard]] WaylandConnection* wayland() override { return connection_.get(); }

  private:
    WaylandDisplay(EventLoop& loop, std::unique_ptr<WaylandConnection> connection);

    std::unique_ptr<WaylandConnection> connection_;
    WaylandScreens screens_;
    CompositorKeepsFocus focus_;
};

} // namespace kelpa
