#pragma once

#include "platform/linux/display/X11Connection.h"

#include <functional>
#include <vector>

namespace kelpa {

/// The lock of a screen saver that tells of itself on no bus, but by a property of the X server's root
/// window: xscreensaver.
class X11Lock {
  public:
    /// Called with what the screen is now, from the main loop, when that changes.
    using Report = std::function<void(bool locked)>;

    /// The connection outlives the object. `says` is called with what the screen saver says; `gone` when it
    /// ended without having unlocked the screen, so that its word counts no longer.
    X11Lock(X11Connection& connection, Report says, std::function<void()> gone);
    X11Lock(const X11Lock&) = delete;
    X11Lock& operator=(const X11Lock&) = delete;

    /// Says at once if the screen is locked already, and from then on every change.
    void observe();

  private:
    void handle(const xcb_generic_event_t& event);
    void look();
    [[nodiscard]] bool propertySaysLocked();
    [[nodiscard]] xcb_window_t findSaver();
    [[nodiscard]] std::vector<xcb_window_t> topWindows();

    X11Connection& connection_;
    Report says_;
    std::function<void()> gone_;
    xcb_atom_t status_ = XCB_ATOM_NONE;
    xcb_atom_t lock_ = XCB_ATOM_NONE;
    xcb_window_t saver_ = XCB_WINDOW_NONE; ///< the window of whoever holds the screen locked; else none
    Subscription events_;
};

} // namespace kelpa
