#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <xcb/xcb.h>

namespace kelpa {

/// The system tray of the desktop: the program that holds the tray's selection, which comes and goes.
class SystemTray : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT

  public:
    SystemTray();
    ~SystemTray() override;

    [[nodiscard]] bool present() const { return manager_ != XCB_WINDOW_NONE; }
    /// Whether it offers windows that can be seen through.
    [[nodiscard]] bool translucent() const;
    /// Asks it to take a window in; `docked` tells when it did.
    void dock(xcb_window_t window);

    bool nativeEventFilter(const QByteArray& type, void* event, qintptr* result) override;

  signals:
    /// Another tray took over, or the last one is gone.
    void changed();
    void docked();

  private:
    void look();

    xcb_atom_t selection_ = XCB_ATOM_NONE;
    xcb_atom_t managerMessage_ = XCB_ATOM_NONE;
    xcb_window_t manager_ = XCB_WINDOW_NONE;
    xcb_window_t window_ = XCB_WINDOW_NONE;
};

} // namespace kelpa
