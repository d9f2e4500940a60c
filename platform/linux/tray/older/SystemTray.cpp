#include "platform/linux/tray/older/SystemTray.h"

#include <QSize>
#include <array>
#include <cstring>

namespace kelpa {

namespace {

constexpr std::uint32_t requestDock = 0;
constexpr int deepEnough = 32;

} // namespace

void SystemTray::setManager(xcb_window_t manager) {
    manager_ = manager;
    const std::uint32_t mask = XCB_EVENT_MASK_PROPERTY_CHANGE;
    if (present())
        xcb_change_window_attributes(x11::connection(), manager, XCB_CW_EVENT_MASK, &mask);
}

QColor SystemTray::ink() const {
    std::array<std::uint32_t, 3> levels{};
    const QByteArray told = x11::property(manager_, "_NET_SYSTEM_TRAY_COLORS");
    if (told.size() < static_cast<qsizetype>(sizeof levels))
        return {};
    std::memcpy(levels.data(), told.constData(), sizeof levels);
    const auto level = [&levels](std::size_t index) { return static_cast<quint16>(levels[index]); };
    return QColor::fromRgba64(level(0), level(1), level(2));
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

void SystemTray::hear(int type, const xcb_generic_event_t& event) {
    if (type == XCB_REPARENT_NOTIFY) {
        const auto& news = reinterpret_cast<const xcb_reparent_notify_event_t&>(event);
        if (news.window == window_ && news.parent != x11::root())
            moved(news.parent);
    } else if (type == XCB_EXPOSE) {
        const auto& news = reinterpret_cast<const xcb_expose_event_t&>(event);
        const bool ours = window_ != XCB_WINDOW_NONE && (news.window == window_ || news.window == parent_);
        if (ours && news.count == 0)
            emit exposed();
    } else if (type == XCB_PROPERTY_NOTIFY) {
        const auto& news = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (news.window == manager_ && news.atom == colours_)
            emit inkChanged();
    }
}

/// A tray that has other colours draws itself anew, and has its icons do so only if it thinks of it.
void SystemTray::moved(xcb_window_t parent) {
    parent_ = parent;
    // The tray's window itself, with some.
    const std::uint32_t mask = XCB_EVENT_MASK_EXPOSURE | XCB_EVENT_MASK_PROPERTY_CHANGE;
    xcb_change_window_attributes(x11::connection(), parent, XCB_CW_EVENT_MASK, &mask);
    QMetaObject::invokeMethod(this, &SystemTray::docked, Qt::QueuedConnection);
}

void askForRoom(xcb_window_t window, const QSize& pixels) {
    // As the window manager's conventions have it: flags first, the least size behind four unused numbers.
    constexpr std::uint32_t leastSize = 1U << 4;
    constexpr std::uint8_t bitsOfEach = 32;
    std::array<std::uint32_t, 18> hints{};
    hints[0] = leastSize;
    hints[5] = static_cast<std::uint32_t>(pixels.width());
    hints[6] = static_cast<std::uint32_t>(pixels.height());
    xcb_change_property(x11::connection(), XCB_PROP_MODE_REPLACE, window, XCB_ATOM_WM_NORMAL_HINTS,
                        XCB_ATOM_WM_SIZE_HINTS, bitsOfEach, hints.size(), hints.data());
    xcb_flush(x11::connection());
}

} // namespace kelpa
