#pragma once

#include <QAbstractNativeEventFilter>
#include <QObject>
#include <xcb/xcb.h>

namespace kelpa {

/// The system tray of the desktop: a window that takes icons in, which the program finds.
class SystemTray : public QObject, public QAbstractNativeEventFilter {
    Q_OBJECT

  public:
    SystemTray();
    ~SystemTray() override;

    /// `XCB_WINDOW_NONE` while there is none.
    void setManager(xcb_window_t manager) { manager_ = manager; }
    [[nodiscard]] bool present() const { return manager_ != XCB_WINDOW_NONE; }
    /// Whether it offers windows that can be seen through.
    [[nodiscard]] bool translucent() const;
    /// Asks it to take a window in; `docked` is emitted when it did.
    void dock(xcb_window_t window);

    bool nativeEventFilter(const QByteArray& type, void* event, qintptr* result) override;

  signals:
    void docked();

  private:
    xcb_window_t manager_ = XCB_WINDOW_NONE;
    xcb_window_t window_ = XCB_WINDOW_NONE;
};

} // namespace kelpa
