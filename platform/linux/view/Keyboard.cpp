#include "platform/linux/view/Keyboard.h"

#include <QGuiApplication>
#include <QScreen>
#include <algorithm>
#include <chrono>
#include <cstdint>
#include <utility>
#include <xcb/xinput.h>

namespace kelpa::view {

using namespace std::chrono_literals;

namespace {

using x11::idOf;

/// Against another program that wants the focus as much.
constexpr auto focusInterval = 200ms;

/// In pixels, while Qt counts a screen's size in units of its own.
QRect pixelsOf(const QScreen& screen) {
    const QRect geometry = screen.geometry();
    return {geometry.topLeft(), (QSizeF(geometry.size()) * screen.devicePixelRatio()).toSize()};
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

std::uint8_t inputExtension() {
    const auto* extension = xcb_get_extension_data(x11::connection(), &xcb_input_id);
    return extension != nullptr && extension->present != 0 ? extension->major_opcode : std::uint8_t{0};
}

/// Raw key presses are told to everyone who asks, whichever window has the focus.
void selectRawKeys(bool selected) {
    selectRawEvents(x11::connection(), x11::root(),
                    selected ? std::uint32_t{XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS} : 0U);
}

} // namespace

void KeyboardGuard::guard(QWindow* window) {
    if (window == window_)
        return;
    listen(window != nullptr);
    if (window == nullptr) {
        retry_.stop();
        release();
        window_ = nullptr;
        return;
    }
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

void KeyboardGuard::hear(int type, const xcb_generic_event_t& event) {
    if (type == XCB_KEY_PRESS) {
        quiet_.start();
        hold();
    } else if (type == XCB_FOCUS_OUT) {
        const auto& left = reinterpret_cast<const xcb_focus_out_event_t&>(event);
        if (left.mode == XCB_NOTIFY_MODE_NORMAL || left.mode == XCB_NOTIFY_MODE_WHILE_GRABBED)
            takeFocus();
    }
}

void KeysAtRest::whenReached(std::function<void()> reached) {
    reached_ = std::move(reached);
    listenForKeys(true);
    quiet_.start();
}

void KeysAtRest::cancel() {
    quiet_.stop();
    listenForKeys(false);
    reached_ = nullptr;
}

void KeysAtRest::finish() {
    const auto reached = std::exchange(reached_, nullptr);
    cancel();
    if (reached)
        reached();
}

void KeysAtRest::listenForKeys(bool wanted) {
    if (wanted == listening())
        return;
    extension_ = inputExtension();
    if (extension_ != 0)
        selectRawKeys(wanted);
    listen(wanted);
}

void KeysAtRest::hear(int type, const xcb_generic_event_t& event) {
    const auto& generic = reinterpret_cast<const xcb_ge_generic_event_t&>(event);
    if (type == XCB_GE_GENERIC && extension_ != 0 && generic.extension == extension_ &&
        generic.event_type == XCB_INPUT_RAW_KEY_PRESS)
        quiet_.start();
}

} // namespace kelpa::view
