#pragma once

#include "platform/linux/display/Display.h"
#include "platform/linux/display/WaylandConnection.h"
#include "platform/linux/display/WaylandScreens.h"

namespace kelpa {

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

    [[nodiscard]] ScreenSource& screens() override { return screens_; }
    [[nodiscard]] FocusMemory& focus() override { return focus_; }
    [[nodiscard]] X11Connection* x11() override { return nullptr; }

  private:
    WaylandDisplay(EventLoop& loop, std::unique_ptr<WaylandConnection> connection);

    std::unique_ptr<WaylandConnection> connection_;
    WaylandScreens screens_;
    CompositorKeepsFocus focus_;
};

} // namespace kelpa
