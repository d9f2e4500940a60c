#include "platform/linux/tray/older/SystemTray.h"

#include "platform/linux/view/X11.h"

#include <QGuiApplication>
#include <cstring>

namespace kelpa {

namespace {

constexpr std::uint8_t sentEventBit = 0x80;
constexpr std::uint32_t requestDock = 0;
constexpr int deepEnough = 32;

} // namespace

SystemTray::SystemTray() {
    qApp->installNativeEventFilter(this);
}

SystemTray::~SystemTray() {
    qApp->removeNativeEventFilter(this);
}

bool SystemTray::translucent() const {
    xcb_visualid_t visual = 0;
    const QByteArray offered = x11::property(manager_, "_NET_SYSTEM_TRAY_VISUAL");
    if (offered.size() != static_cast<qsizetype>(sizeof visual))
        return false;
    std::memcpy(&visual, offered.constData(), sizeof visual);
    return x11::depthOf(visual) == deepEnough;
}

void SystemTray::dock(xcb_window_t window) {
    window_ = window;
    xcb_client_message_event_t request{};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.window = manager_;
    request.type = x11::atom("_NET_SYSTEM_TRAY_OPCODE");
    request.data.data32[0] = XCB_CURRENT_TIME;
    request.data.data32[1] = requestDock;
    request.data.data32[2] = window;
    xcb_send_event(x11::connection(), 0, manager_, XCB_EVENT_MASK_NO_EVENT,
                   reinterpret_cast<const char*>(&request));
    xcb_flush(x11::connection());
}

bool SystemTray::nativeEventFilter(const QByteArray& type, void* event, qintptr* /*result*/) {
    if (type != "xcb_generic_event_t")
        return false;
    const auto& any = *static_cast<const xcb_generic_event_t*>(event);
    if ((any.response_type & ~sentEventBit) == XCB_REPARENT_NOTIFY) {
        const auto& moved = reinterpret_cast<const xcb_reparent_notify_event_t&>(any);
        if (moved.window == window_ && moved.parent != x11::root())
            QMetaObject::invokeMethod(this, &SystemTray::docked, Qt::QueuedConnection);
    }
    return false;
}

} // namespace kelpa
