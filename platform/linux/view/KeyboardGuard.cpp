#include "platform/linux/view/KeyboardGuard.h"

#include "platform/linux/view/X11.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <chrono>

namespace kelpa::view {

using namespace std::chrono_literals;

namespace {

constexpr auto retryInterval = 100ms;
/// Screen lockers try for some four seconds to get the keyboard.
constexpr auto quietTime = 2s;
/// Against another program that wants the focus as much.
constexpr auto focusInterval = 200ms;
constexpr std::uint8_t sentEventBit = 0x80;

/// In pixels, while Qt counts a screen's size in units of its own.
QRect pixelsOf(const QScreen& screen) {
    const QRect geometry = screen.geometry();
    return {geometry.topLeft(), (QSizeF(geometry.size()) * screen.devicePixelRatio()).toSize()};
}

xcb_window_t idOf(const QWindow& window) {
    return static_cast<xcb_window_t>(window.winId());
}

bool isOurs(xcb_window_t id) {
    const auto windows = QGuiApplication::topLevelWindows();
    return std::any_of(windows.begin(), windows.end(), [id](const QWindow* window) {
        return window->handle() != nullptr && idOf(*window) == id;
    });
}

/// Screen lockers cover a screen, and the window manager cannot reach them.
bool isLocker(xcb_window_t window) {
    if (window == XCB_WINDOW_NONE || isOurs(window))
        return false;
    const QRect place = x11::unmanagedPlace(window);
    const auto screens = QGuiApplication::screens();
    return std::any_of(screens.begin(), screens.end(),
                       [&place](const QScreen* screen) { return place.contains(pixelsOf(*screen)); });
}

} // namespace

KeyboardGuard::KeyboardGuard(QObject* parent) : QObject(parent) {
    retry_.setInterval(retryInterval);
    retry_.setSingleShot(true);
    retry_.callOnTimeout([this] { takeFocus(); });
    quiet_.setInterval(quietTime);
    quiet_.setSingleShot(true);
    quiet_.callOnTimeout([this] { restIfQuiet(); });
}

void KeyboardGuard::guard(QWindow* window) {
    if (window == window_ || x11::connection() == nullptr)
        return;
    if (window == nullptr) {
        qApp->removeNativeEventFilter(this);
        retry_.stop();
        release();
        window_ = nullptr;
        return;
    }
    if (window_ == nullptr)
        qApp->installNativeEventFilter(this);
    window_ = window;
    hold();
}

/// What wants the focus as much as we do gets it back from us some times a second and not in a loop.
void KeyboardGuard::takeFocus() {
    if (!hold() || x11::focused() == idOf(*window_))
        return;
    if (!focusAgain_.hasExpired())
        return retry_.start();
    x11::focus(idOf(*window_));
    focusAgain_.setRemainingTime(focusInterval);
}

/// Sees to it that no key reaches anything else. False when there is nothing to guard, or a screen locker has
/// the focus; that is looked after again in a moment.
bool KeyboardGuard::hold() {
    if (window_ == nullptr)
        return false;
    if (isLocker(x11::focused())) {
        release();
        retry_.start();
        return false;
    }
    if (!grabbed_)
        grab();
    return true;
}

void KeyboardGuard::grab() {
    grabbed_ = window_->setKeyboardGrabEnabled(true);
    if (grabbed_)
        quiet_.start();
    else
        retry_.start();
}

void KeyboardGuard::release() {
    quiet_.stop();
    if (grabbed_ && window_ != nullptr)
        window_->setKeyboardGrabEnabled(false);
    grabbed_ = false;
}

void KeyboardGuard::restIfQuiet() {
    if (window_ == nullptr || x11::focused() == idOf(*window_))
        return release();
    quiet_.start();
    takeFocus();
}

bool KeyboardGuard::nativeEventFilter(const QByteArray& type, void* event, qintptr* /*result*/) {
    if (type != "xcb_generic_event_t")
        return false;
    const auto* generic = static_cast<const xcb_generic_event_t*>(event);
    const int kind = generic->response_type & ~sentEventBit;
    if (kind == XCB_KEY_PRESS) {
        quiet_.start();
        hold();
    } else if (kind == XCB_FOCUS_OUT) {
        const auto* left = reinterpret_cast<const xcb_focus_out_event_t*>(generic);
        if (left->mode == XCB_NOTIFY_MODE_NORMAL || left->mode == XCB_NOTIFY_MODE_WHILE_GRABBED)
            takeFocus();
    }
    return false;
}

} // namespace kelpa::view
