#pragma once

#include "platform/linux/busy/DesktopBusyness.h"
#include "platform/linux/display/WaylandConnection.h"
#include "platform/linux/display/X11Connection.h"

namespace kelpa {

/// Whether the active window covers a whole screen, by what an X server's window manager says of it.
class X11FullScreen final : public BusySource {
  public:
    /// The connection outlives the object.
    explicit X11FullScreen(X11Connection& connection) : connection_(connection) {}

    Subscription ask(Answer answer) override;
    [[nodiscard]] std::optional<std::string> unavailable() override;

  private:
    [[nodiscard]] bool covers(xcb_window_t window);
    [[nodiscard]] X11Reply<xcb_get_property_reply_t> property(xcb_window_t window, const char* name,
                                                              xcb_atom_t type);

    X11Connection& connection_;
};

/// The same by the list of windows of a Wayland compositor, which is asked for with the question and given
/// back with the answer. Many compositors have none for everybody.
class WaylandFullScreen final : public BusySource {
  public:
    /// The connection outlives the object.
    explicit WaylandFullScreen(WaylandConnection& connection) : connection_(connection) {}

    Subscription ask(Answer answer) override;
    [[nodiscard]] std::optional<std::string> unavailable() override;

  private:
    WaylandConnection& connection_;
};

} // namespace kelpa
