#include "platform/linux/view/KeysAtRest.h"

#include "platform/linux/view/X11.h"

#include <QGuiApplication>

#include <chrono>
#include <cstdint>
#include <utility>
#include <xcb/xinput.h>

namespace kelpa::view {

using namespace std::chrono_literals;

namespace {

constexpr auto quietTime = 1s;

std::uint8_t inputExtension() {
    if (x11::connection() == nullptr)
        return 0;
    const auto* extension = xcb_get_extension_data(x11::connection(), &xcb_input_id);
    return extension != nullptr && extension->present != 0 ? extension->major_opcode : std::uint8_t{0};
}

/// Raw key presses are told to everyone who asks, whichever window has the focus.
void selectRawKeys(bool selected) {
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } events = {};
    events.head.deviceid = XCB_INPUT_DEVICE_ALL_MASTER;
    events.head.mask_len = 1;
    events.mask = selected ? std::uint32_t{XCB_INPUT_XI_EVENT_MASK_RAW_KEY_PRESS} : 0U;
    xcb_input_xi_select_events(x11::connection(), x11::root(), 1, &events.head);
    xcb_flush(x11::connection());
}

} // namespace

KeysAtRest::KeysAtRest(QObject* parent) : QObject(parent) {
    quiet_.setSingleShot(true);
    quiet_.setInterval(quietTime);
    quiet_.callOnTimeout([this] { finish(); });
}

KeysAtRest::~KeysAtRest() {
    cancel();
}

void KeysAtRest::whenReached(std::function<void()> reached) {
    reached_ = std::move(reached);
    listen(true);
    quiet_.start();
}

void KeysAtRest::cancel() {
    quiet_.stop();
    listen(false);
    reached_ = nullptr;
}

void KeysAtRest::finish() {
    const auto reached = std::exchange(reached_, nullptr);
    cancel();
    if (reached)
        reached();
}

void KeysAtRest::listen(bool listening) {
    if (listening == listening_)
        return;
    listening_ = listening;
    extension_ = inputExtension();
    if (extension_ != 0)
        selectRawKeys(listening);
    if (listening)
        qApp->installNativeEventFilter(this);
    else
        qApp->removeNativeEventFilter(this);
}

bool KeysAtRest::nativeEventFilter(const QByteArray& type, void* event, qintptr* /*result*/) {
    if (type != "xcb_generic_event_t" || extension_ == 0)
        return false;
    const auto* generic = static_cast<const xcb_ge_generic_event_t*>(event);
    const bool rawKey = (generic->response_type & ~0x80) == XCB_GE_GENERIC &&
                        generic->extension == extension_ && generic->event_type == XCB_INPUT_RAW_KEY_PRESS;
    if (rawKey)
        quiet_.start();
    return false;
}

} // namespace kelpa::view
