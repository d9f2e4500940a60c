#pragma once

#include "platform/linux/display/Display.h"
#include "platform/linux/display/X11Connection.h"
#include "platform/linux/display/X11Focus.h"
#include "platform/linux/display/X11Screens.h"

namespace kelpa {

/// An X server.
class X11Display final : public Display {
  public:
    /// Null when none answers at $DISPLAY. `lost` runs once from the main loop when the server goes away.
    static std::unique_ptr<X11Display> open(EventLoop& loop, std::function<void()> lost);

    [[nodiscard]] ScreenSource& screens() override { return screens_; }
    [[nodiscard]] FocusMemory& focus() override { return focus_; }
    [[nodiscard]] X11Connection* x11() override { return connection_.get(); }

  private:
    X11Display(EventLoop& loop, std::unique_ptr<X11Connection> connection);

    std::unique_ptr<X11Connection> connection_;
    X11Screens screens_;
    X11Focus focus_;
};

} // namespace kelpa
