#pragma once

#include "platform/linux/display/X11Reply.h"

#include <QAbstractNativeEventFilter>
#include <QByteArray>
#include <QImage>
#include <QRect>
#include <functional>
#include <xcb/xcb.h>

class QColor;
class QWindow;

/// What Qt offers no verb for, over the X connection that Qt has open.
namespace kelpa::x11 {

/// Null when the program does not run on X11.
[[nodiscard]] xcb_connection_t* connection();
[[nodiscard]] xcb_window_t root();
/// Makes the window if it has none yet.
[[nodiscard]] xcb_window_t idOf(const QWindow& window);
[[nodiscard]] int screenNumber();
[[nodiscard]] xcb_atom_t atom(const QByteArray& name);
[[nodiscard]] xcb_window_t selectionOwner(const QByteArray& selection);
/// The bytes of a property of any type; empty when there is none.
[[nodiscard]] QByteArray property(xcb_window_t window, const QByteArray& name);
/// Whether something composites the windows, so that their opacity shows.
[[nodiscard]] bool composited();

/// Bits of a pixel of that visual; 0 for an unknown one.
[[nodiscard]] int depthOf(xcb_visualid_t visual);
/// What stands behind a window inside another one, in the window's place; null when that cannot be told.
[[nodiscard]] QImage picture(xcb_window_t window, const QSize& pixels);

/// A text among the settings that the desktop's settings program publishes; empty when there is no such
/// program or setting.
[[nodiscard]] QByteArray setting(const QByteArray& name);
/// The same, out of the published bytes.
[[nodiscard]] QByteArray findSetting(const QByteArray& published, const QByteArray& name);

/// Where a window really is, in pixels of the desktop.
void moveResize(xcb_window_t window, const QRect& pixels);
void raise(xcb_window_t window);
void lower(xcb_window_t window);
void focus(xcb_window_t window);
/// The window that has the focus; of a special value that stands for none or for any, no window.
[[nodiscard]] xcb_window_t focused();
/// Where the top-level window that holds this one lies, in pixels of the desktop, if it is beyond the window
/// manager's reach; empty otherwise.
[[nodiscard]] QRect unmanagedPlace(xcb_window_t window);
/// Asks the window manager for the keyboard and a place in front, as for a person who chose the window.
void activate(xcb_window_t window);
/// What the server itself fills the window with before it is painted.
void setBackground(xcb_window_t window, const QColor& color);
/// Adds a type to those that the window has, if it is none of them. Most window managers go by the first,
/// those that tile by any of them.
void addType(xcb_window_t window, const QByteArray& type);
/// Has compositors draw no shadow around the window.
void forbidShadow(xcb_window_t window);
/// An unmanaged window of one pixel that nobody can see, because it lies beside the desktop. It is there
/// until `destroy`.
[[nodiscard]] xcb_window_t createUnseen();
void destroy(xcb_window_t window);
/// Fills a part of the window with that.
void clear(xcb_window_t window, const QRect& pixels);
/// Adds to or takes from the events that come from the root window.
void watchRoot(std::uint32_t mask, bool watched);

/// Hears the events that the server sends this program, while it listens.
class EventFilter : private QAbstractNativeEventFilter {
  protected:
    ~EventFilter() override = default;
    void listen(bool listening);
    [[nodiscard]] bool listening() const { return listening_; }
    virtual void hear(int type, const xcb_generic_event_t& event) = 0;

  private:
    bool nativeEventFilter(const QByteArray& type, void* event, qintptr* result) final;

    bool listening_ = false;
};

/// Hears of other settings than those that `setting` knew: published by the program that is there, or by one
/// that came in its place.
class SettingsWatch : private EventFilter {
  public:
    /// Without an X server nothing is ever heard.
    explicit SettingsWatch(std::function<void()> changed);
    ~SettingsWatch();
    SettingsWatch(const SettingsWatch&) = delete;
    SettingsWatch& operator=(const SettingsWatch&) = delete;

  private:
    void hear(int type, const xcb_generic_event_t& event) override;
    void watchManager();

    std::function<void()> changed_;
    xcb_atom_t selection_ = XCB_ATOM_NONE;
    xcb_atom_t settings_ = XCB_ATOM_NONE;
    xcb_window_t manager_ = XCB_WINDOW_NONE;
};

} // namespace kelpa::x11
