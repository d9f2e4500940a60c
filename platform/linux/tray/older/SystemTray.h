#pragma once

#include "platform/linux/view/X11.h"

#include <QColor>
#include <QObject>

namespace kelpa {

/// The system tray of the desktop: a window that takes icons in, which the program finds.
class SystemTray : public QObject, private x11::EventFilter {
    Q_OBJECT

  public:
    SystemTray() { listen(true); }
    ~SystemTray() override { listen(false); }

    /// `XCB_WINDOW_NONE` while there is none.
    void setManager(xcb_window_t manager);
    [[nodiscard]] bool present() const { return manager_ != XCB_WINDOW_NONE; }
    /// Whether it offers windows that can be seen through.
    [[nodiscard]] bool translucent() const;
    /// In which colour icons are seen on it; no colour where it does not tell.
    [[nodiscard]] QColor ink() const;
    /// Asks it to take a window in; `docked` is emitted when it did.
    void dock(xcb_window_t window);

  signals:
    void docked();
    /// The docked window has to be painted anew, maybe because the tray has other colours.
    void exposed();
    void inkChanged();

  private:
    void hear(int type, const xcb_generic_event_t& event) override;
    void moved(xcb_window_t parent);

    xcb_window_t manager_ = XCB_WINDOW_NONE;
    xcb_window_t window_ = XCB_WINDOW_NONE;
    xcb_window_t parent_ = XCB_WINDOW_NONE; ///< what the window is docked in
    xcb_atom_t colours_ = x11::atom("_NET_SYSTEM_TRAY_COLORS");
};

/// Says how much room a window wants. Some trays grant it, by another size of the window, and others have
/// slots of one size; the window is never resized by ourselves, which the latter would put right without a
/// word.
void askForRoom(xcb_window_t window, const QSize& pixels);

} // namespace kelpa
