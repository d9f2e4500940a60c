#pragma once

#include "platform/linux/view/Delay.h"
#include "platform/linux/view/X11.h"

#include <QDeadlineTimer>
#include <QPointer>
#include <QWindow>
#include <functional>

namespace kelpa::view {

/// Keeps every key from what lies beneath, as long as a window is guarded: by an active grab of the keyboard,
/// tried again while another program has one. When nobody has pressed a key for a moment, and the window has
/// the focus anyway, the grab rests until the next key or until the focus goes elsewhere, because a screen
/// locker that finds the keyboard grabbed cannot lock, and a break is when people leave their desk. A focus
/// that goes elsewhere, as to a window that opens, is taken back, unless a screen locker has it.
class KeyboardGuard : private x11::EventFilter {
  public:
    /// Guards this window from now on; null ends it. The same one again changes nothing.
    void guard(QWindow* window);
    /// Gives the guarded window the input focus, unless it belongs to a screen locker; without a guarded
    /// window, does nothing.
    void takeFocus();

  private:
    void hear(int type, const xcb_generic_event_t& event) override;
    bool hold();
    void grab();
    void release();
    void restIfQuiet();

    QPointer<QWindow> window_;
    Delay retry_{std::chrono::milliseconds(100), [this] { takeFocus(); }};
    /// Screen lockers try for some four seconds to get the keyboard.
    Delay quiet_{std::chrono::seconds(2), [this] { restIfQuiet(); }};
    QDeadlineTimer focusAgain_; ///< when the focus may be taken again
    bool grabbed_ = false;
};

/// Waits for a moment in which no key is pressed anywhere, so that whoever is typing is not interrupted.
class KeysAtRest : private x11::EventFilter {
  public:
    KeysAtRest() = default;
    ~KeysAtRest() override { cancel(); }
    KeysAtRest(const KeysAtRest&) = delete;
    KeysAtRest& operator=(const KeysAtRest&) = delete;
    /// Runs `reached` once, after the first second without a key press. A wait under way is replaced.
    void whenReached(std::function<void()> reached);
    void cancel();

  private:
    void hear(int type, const xcb_generic_event_t& event) override;
    void listenForKeys(bool wanted);
    void finish();

    Delay quiet_{std::chrono::seconds(1), [this] { finish(); }};
    std::function<void()> reached_;
    std::uint8_t extension_ = 0; ///< of the input extension's events; 0 where there is none
};

} // namespace kelpa::view
