#include "platform/linux/view/KeyboardGuard.h"

#include "platform/linux/view/X11.h"

#include <QGuiApplication>
#include <chrono>

namespace kelpa {

using namespace std::chrono_literals;

namespace {

constexpr auto retryInterval = 100ms;
/// Screen lockers try for some four seconds to get the keyboard.
constexpr auto quietTime = 2s;
constexpr std::uint8_t sentEventBit = 0x80;

} // namespace

KeyboardGuard::KeyboardGuard(QObject* parent) : QObject(parent) {
    retry_.setInterval(retryInterval);
    retry_.callOnTimeout([this] { grab(); });
    quiet_.setInterval(quietTime);
    quiet_.setSingleShot(true);
    quiet_.callOnTimeout([this] { rest(); });
}

void KeyboardGuard::guard(QWindow* window) {
    if (window == window_)
        return;
    if (window == nullptr) {
        qApp->removeNativeEventFilter(this);
        rest();
        window_ = nullptr;
        return;
    }
    if (window_ == nullptr)
        qApp->installNativeEventFilter(this);
    window_ = window;
    grab();
}

void KeyboardGuard::takeFocus() {
    if (window_ != nullptr && x11::connection() != nullptr)
        x11::focus(static_cast<xcb_window_t>(window_->winId()));
}

void KeyboardGuard::grab() {
    grabbed_ = window_ != nullptr && window_->setKeyboardGrabEnabled(true);
    if (grabbed_) {
        retry_.stop();
        quiet_.start();
    } else if (window_ != nullptr) {
        retry_.start();
    }
}

void KeyboardGuard::rest() {
    retry_.stop();
    quiet_.stop();
    if (grabbed_ && window_ != nullptr)
        window_->setKeyboardGrabEnabled(false);
    grabbed_ = false;
}

bool KeyboardGuard::nativeEventFilter(const QByteArray& type, void* event, qintptr* /*result*/) {
    if (type != "xcb_generic_event_t")
        return false;
    const auto* generic = static_cast<const xcb_generic_event_t*>(event);
    const int kind = generic->response_type & ~sentEventBit;
    if (kind == XCB_KEY_PRESS) {
        quiet_.start();
        if (!grabbed_)
            grab();
    } else if (kind == XCB_FOCUS_OUT && !grabbed_) {
        const auto* left = reinterpret_cast<const xcb_focus_out_event_t*>(generic);
        if (left->mode == XCB_NOTIFY_MODE_NORMAL || left->mode == XCB_NOTIFY_MODE_WHILE_GRABBED)
            grab();
    }
    return false;
}

} // namespace kelpa
