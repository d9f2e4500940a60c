#pragma once

#include "platform/linux/EventLoop.h"
#include "platform/linux/display/ScreenSource.h"

#include <functional>
#include <memory>
#include <string>

namespace kelpa {

class X11Connection;

/// The display server of the session, as far as the program itself deals with it. Windows are drawn by
/// `kelpa-view`, on a connection of its own.
class Display {
  public:
    virtual ~Display() = default;
    [[nodiscard]] virtual ScreenSource& screens() = 0;
    [[nodiscard]] virtual FocusMemory& focus() = 0;
    /// The connection to an X server, whose trays embed icons; null where there is no such server.
    [[nodiscard]] virtual X11Connection* x11() = 0;
};

struct OpenedDisplay {
    std::unique_ptr<Display> display; ///< null where there is none
    std::string error;                ///< one line that says why
};

/// Whether this is a Wayland session, of which an X server may be a part: a compositor takes connections.
[[nodiscard]] bool inWaylandSession(EventLoop& loop);

/// Connects to the session's Wayland compositor, or else to its X server. `KELPA_DISPLAY` set to `wayland` or
/// `x11` in the environment settles which; the choice is left there for the helper programs. `lost` runs once
/// from the main loop when the server goes away.
[[nodiscard]] OpenedDisplay openDisplay(EventLoop& loop, const std::function<void()>& lost);

} // namespace kelpa
