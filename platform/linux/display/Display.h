#pragma once

#include "platform/linux/EventLoop.h"
#include "platform/linux/display/Screens.h"
#include "platform/linux/display/WaylandConnection.h"
#include "platform/linux/display/X11Connection.h"

#include <functional>
#include <memory>
#include <string>

namespace kelpa {

/// Where what draws reports what a person who reads the log should know.
class WindowReport {
  public:
    virtual ~WindowReport() = default;
    virtual void info(const std::string& text) = 0;
    virtual void warning(const std::string& text) = 0;
};

/// What others must know of the program's own windows: what is done in them is not done at work.
class OwnWindows {
  public:
    virtual ~OwnWindows() = default;
    /// Break windows are on every screen, and none of them is on its way out.
    [[nodiscard]] virtual bool coverEveryScreen() const = 0;
    [[nodiscard]] virtual bool anyVisible() const = 0;
    /// Real time since a person last used one of them, as far as the view can tell: only on a display server
    /// that says nothing better, and to a fifth of a second. Infinite when nobody did.
    [[nodiscard]] virtual double secondsSinceInput() const = 0;
    /// Process id of the program that shows them; 0 when none runs.
    [[nodiscard]] virtual int viewPid() const = 0;
};

/// Who has the keyboard.
class FocusMemory {
  public:
    virtual ~FocusMemory() = default;
    /// Keeps in mind who has the keyboard now, unless that is already kept.
    virtual void remember() = 0;
    /// Gives the keyboard back and forgets; does nothing when nothing is kept.
    virtual void giveBack() = 0;
};

/// The display server of the session, as far as the program itself deals with it. Windows are drawn by
/// `kelpa-view`, on a connection of its own.
struct Display {
    /// The connection to an X server, whose trays embed icons; null where there is no such server.
    std::unique_ptr<X11Connection> x11;
    /// The connection to a Wayland compositor; null where that is not what windows are shown by.
    std::unique_ptr<WaylandConnection> wayland;
    std::unique_ptr<Screens> screens;
    std::unique_ptr<FocusMemory> focus;
};

/// The display of the server at $DISPLAY or $WAYLAND_DISPLAY; null when none answers there. `lost` runs once
/// from the main loop, which outlives the display, when the server goes away.
[[nodiscard]] std::unique_ptr<Display> openX11Display(EventLoop& loop, std::function<void()> lost);
[[nodiscard]] std::unique_ptr<Display> openWaylandDisplay(EventLoop& loop, std::function<void()> lost);

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
