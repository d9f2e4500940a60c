#include "platform/linux/view/X11.h"

#include <QColor>
#include <QDataStream>
#include <QGuiApplication>
#include <QWindow>
#include <array>
#include <cstring>
#include <utility>

namespace kelpa::x11 {

namespace {

/// More than any settings program publishes, in units of four bytes.
constexpr std::uint32_t longestProperty = 65536;

/// The screen that Qt draws on.
int defaultScreen() {
    int number = 0;
    char* host = nullptr;
    int display = 0;
    if (xcb_parse_display(nullptr, &host, &display, &number) != 0)
        std::free(host);
    return number;
}

const xcb_screen_t& screen() {
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection()));
    for (int i = 0; i < screenNumber() && screens.rem > 1; ++i)
        xcb_screen_next(&screens);
    return *screens.data;
}

/// What the server says to a question; null where it refuses.
template <typename Reply, typename Cookie>
X11Reply<Reply> answer(Reply* (*take)(xcb_connection_t*, Cookie, xcb_generic_error_t**), Cookie cookie) {
    return X11Reply<Reply>(take(connection(), cookie, nullptr));
}

/// Of a top-level window.
QRect placeIfUnmanaged(xcb_window_t window) {
    const auto attributes = xcb_get_window_attributes(connection(), window);
    const auto geometry = xcb_get_geometry(connection(), window);
    const auto kind = answer(xcb_get_window_attributes_reply, attributes);
    const auto place = answer(xcb_get_geometry_reply, geometry);
    if (!kind || !place || kind->override_redirect == 0)
        return {};
    return {place->x, place->y, place->width, place->height};
}

QByteArray settingsSelection() {
    return "_XSETTINGS_S" + QByteArray::number(screenNumber());
}

const QByteArray publishedSettings = QByteArrayLiteral("_XSETTINGS_SETTINGS");

void restack(xcb_window_t window, std::uint32_t mode) {
    xcb_configure_window(connection(), window, XCB_CONFIG_WINDOW_STACK_MODE, &mode);
    xcb_flush(connection());
}

enum class Kind : quint8 { Integer = 0, Text = 1, Color = 2 };

} // namespace

xcb_connection_t* connection() {
    const auto* native = qApp->nativeInterface<QNativeInterface::QX11Application>();
    return native != nullptr ? native->connection() : nullptr;
}

int screenNumber() {
    static const int number = defaultScreen();
    return number;
}

xcb_window_t root() {
    return screen().root;
}

xcb_window_t idOf(const QWindow& window) {
    return static_cast<xcb_window_t>(window.winId());
}

xcb_atom_t atom(const QByteArray& name) {
    const auto cookie =
        xcb_intern_atom(connection(), 0, static_cast<std::uint16_t>(name.size()), name.constData());
    const auto reply = answer(xcb_intern_atom_reply, cookie);
    return reply ? reply->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

xcb_window_t selectionOwner(const QByteArray& selection) {
    if (connection() == nullptr)
        return XCB_WINDOW_NONE;
    const auto reply =
        answer(xcb_get_selection_owner_reply, xcb_get_selection_owner(connection(), atom(selection)));
    return reply ? reply->owner : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

QByteArray property(xcb_window_t window, const QByteArray& name) {
    const auto cookie =
        xcb_get_property(connection(), 0, window, atom(name), XCB_ATOM_ANY, 0, longestProperty);
    const auto reply = answer(xcb_get_property_reply, cookie);
    if (!reply)
        return {};
    return {static_cast<const char*>(xcb_get_property_value(reply.get())),
            xcb_get_property_value_length(reply.get())};
}

bool composited() {
    return selectionOwner("_NET_WM_CM_S" + QByteArray::number(screenNumber())) != XCB_WINDOW_NONE;
}

int depthOf(xcb_visualid_t visual) {
    for (auto depth = xcb_screen_allowed_depths_iterator(&screen()); depth.rem > 0; xcb_depth_next(&depth))
        for (auto type = xcb_depth_visuals_iterator(depth.data); type.rem > 0; xcb_visualtype_next(&type))
            if (type.data->visual_id == visual)
                return depth.data->depth;
    return 0;
}

QImage picture(xcb_window_t window, const QSize& pixels) {
    // The window is emptied, so that the server shows through it what its parent has there.
    const std::uint32_t parentRelative = XCB_BACK_PIXMAP_PARENT_RELATIVE;
    xcb_change_window_attributes(connection(), window, XCB_CW_BACK_PIXMAP, &parentRelative);
    clear(window, QRect(QPoint(), pixels));
    const auto cookie = xcb_get_image(connection(), XCB_IMAGE_FORMAT_Z_PIXMAP, window, 0, 0,
                                      static_cast<std::uint16_t>(pixels.width()),
                                      static_cast<std::uint16_t>(pixels.height()), ~0U);
    const auto reply = answer(xcb_get_image_reply, cookie);
    QImage image(pixels, QImage::Format_RGB32);
    if (!reply || xcb_get_image_data_length(reply.get()) != image.sizeInBytes())
        return {};
    std::memcpy(image.bits(), xcb_get_image_data(reply.get()), static_cast<std::size_t>(image.sizeInBytes()));
    return image;
}

void moveResize(xcb_window_t window, const QRect& pixels) {
    const std::array<std::uint32_t, 4> values{
        static_cast<std::uint32_t>(pixels.x()), static_cast<std::uint32_t>(pixels.y()),
        static_cast<std::uint32_t>(pixels.width()), static_cast<std::uint32_t>(pixels.height())};
    xcb_configure_window(connection(), window,
                         XCB_CONFIG_WINDOW_X | XCB_CONFIG_WINDOW_Y | XCB_CONFIG_WINDOW_WIDTH |
                             XCB_CONFIG_WINDOW_HEIGHT,
                         values.data());
    xcb_flush(connection());
}

void raise(xcb_window_t window) {
    restack(window, XCB_STACK_MODE_ABOVE);
}

void lower(xcb_window_t window) {
    restack(window, XCB_STACK_MODE_BELOW);
}

void focus(xcb_window_t window) {
    xcb_set_input_focus(connection(), XCB_INPUT_FOCUS_PARENT, window, XCB_CURRENT_TIME);
    xcb_flush(connection());
}

xcb_window_t focused() {
    const auto reply = answer(xcb_get_input_focus_reply, xcb_get_input_focus(connection()));
    return reply && reply->focus > XCB_INPUT_FOCUS_POINTER_ROOT ? reply->focus
                                                                : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
}

/// What window managers put around their windows is beyond their own reach as well, but what they look after
/// has a state.
QRect unmanagedPlace(xcb_window_t window) {
    while (window != XCB_WINDOW_NONE && property(window, QByteArrayLiteral("WM_STATE")).isEmpty()) {
        const auto tree = answer(xcb_query_tree_reply, xcb_query_tree(connection(), window));
        if (!tree)
            return {};
        if (tree->parent == tree->root)
            return placeIfUnmanaged(window);
        window = tree->parent;
    }
    return {};
}

void activate(xcb_window_t window) {
    constexpr std::uint32_t fromUser = 2;
    xcb_client_message_event_t request{};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.window = window;
    request.type = atom("_NET_ACTIVE_WINDOW");
    request.data.data32[0] = fromUser;
    xcb_send_event(connection(), 0, root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&request));
    xcb_flush(connection());
}

void setBackground(xcb_window_t window, const QColor& color) {
    // Of a window without alpha the highest eight bits count for nothing.
    const std::uint32_t pixel = color.rgb();
    xcb_change_window_attributes(connection(), window, XCB_CW_BACK_PIXEL, &pixel);
}

void addType(xcb_window_t window, const QByteArray& type) {
    const xcb_atom_t added = atom(type);
    const QByteArray raw(reinterpret_cast<const char*>(&added), sizeof added);
    if (!property(window, "_NET_WM_WINDOW_TYPE").contains(raw))
        xcb_change_property(connection(), XCB_PROP_MODE_APPEND, window, atom("_NET_WM_WINDOW_TYPE"),
                            XCB_ATOM_ATOM, 32, 1, &added);
}

/// A window that says that it draws a frame of its own, here of no width, is believed by some to draw its
/// shadow as well. Others go by the alpha that it could have.
void forbidShadow(xcb_window_t window) {
    constexpr std::array<std::uint32_t, 4> width{};
    constexpr std::uint8_t bitsOfEach = 32;
    xcb_change_property(connection(), XCB_PROP_MODE_REPLACE, window, atom("_GTK_FRAME_EXTENTS"),
                        XCB_ATOM_CARDINAL, bitsOfEach, width.size(), width.data());
}

xcb_window_t createUnseen() {
    const xcb_window_t window = xcb_generate_id(connection());
    const std::uint32_t unmanaged = 1;
    xcb_create_window(connection(), XCB_COPY_FROM_PARENT, window, root(), -1, -1, 1, 1, 0,
                      XCB_WINDOW_CLASS_INPUT_OUTPUT, XCB_COPY_FROM_PARENT, XCB_CW_OVERRIDE_REDIRECT,
                      &unmanaged);
    xcb_map_window(connection(), window);
    return window;
}

void destroy(xcb_window_t window) {
    xcb_destroy_window(connection(), window);
    xcb_flush(connection());
}

void clear(xcb_window_t window, const QRect& pixels) {
    xcb_clear_area(connection(), 0, window, static_cast<std::int16_t>(pixels.x()),
                   static_cast<std::int16_t>(pixels.y()), static_cast<std::uint16_t>(pixels.width()),
                   static_cast<std::uint16_t>(pixels.height()));
    xcb_flush(connection());
}

void watchRoot(std::uint32_t mask, bool watched) {
    const auto reply =
        answer(xcb_get_window_attributes_reply, xcb_get_window_attributes(connection(), root()));
    if (!reply)
        return;
    const std::uint32_t events = watched ? reply->your_event_mask | mask : reply->your_event_mask & ~mask;
    xcb_change_window_attributes(connection(), root(), XCB_CW_EVENT_MASK, &events);
    xcb_flush(connection());
}

QByteArray findSetting(const QByteArray& published, const QByteArray& name) {
    const auto filling = [](qsizetype length) { return static_cast<int>((4 - length % 4) % 4); };
    QDataStream in(published);
    in.setByteOrder(published.startsWith('\1') ? QDataStream::BigEndian : QDataStream::LittleEndian);
    in.skipRawData(8); // byte order and serial number
    quint32 count = 0;
    in >> count;
    for (quint32 i = 0; i < count && in.status() == QDataStream::Ok; ++i) {
        quint8 kind = 0;
        quint8 unused = 0;
        quint16 length = 0;
        in >> kind >> unused >> length;
        QByteArray key(length, '\0');
        in.readRawData(key.data(), length);
        in.skipRawData(filling(length) + 4); // and the serial number of the last change
        QByteArray value;
        if (kind == static_cast<quint8>(Kind::Text)) {
            in >> value;
            in.skipRawData(filling(value.size()));
        } else {
            in.skipRawData(kind == static_cast<quint8>(Kind::Integer) ? 4 : 8);
        }
        if (key == name && in.status() == QDataStream::Ok)
            return value;
    }
    return {};
}

QByteArray setting(const QByteArray& name) {
    const xcb_window_t manager = selectionOwner(settingsSelection());
    if (manager == XCB_WINDOW_NONE)
        return {};
    return findSetting(property(manager, publishedSettings), name);
}

void EventFilter::listen(bool listening) {
    if (listening == listening_)
        return;
    listening_ = listening;
    if (listening)
        qApp->installNativeEventFilter(this);
    else
        qApp->removeNativeEventFilter(this);
}

bool EventFilter::nativeEventFilter(const QByteArray& type, void* event, qintptr* /*result*/) {
    if (type == "xcb_generic_event_t") {
        const auto& generic = *static_cast<const xcb_generic_event_t*>(event);
        hear(typeOf(generic), generic);
    }
    return false;
}

SettingsWatch::SettingsWatch(std::function<void()> changed) : changed_(std::move(changed)) {
    if (connection() == nullptr)
        return;
    selection_ = atom(settingsSelection());
    settings_ = atom(publishedSettings);
    // A program that takes the settings over says so to everybody.
    watchRoot(XCB_EVENT_MASK_STRUCTURE_NOTIFY, true);
    watchManager();
    listen(true);
}

SettingsWatch::~SettingsWatch() {
    listen(false);
}

/// The toolkit asks for the same two kinds of events, for the resolution that is published with the rest.
void SettingsWatch::watchManager() {
    manager_ = selectionOwner(settingsSelection());
    const std::uint32_t events = XCB_EVENT_MASK_STRUCTURE_NOTIFY | XCB_EVENT_MASK_PROPERTY_CHANGE;
    if (manager_ != XCB_WINDOW_NONE)
        xcb_change_window_attributes(connection(), manager_, XCB_CW_EVENT_MASK, &events);
    xcb_flush(connection());
}

void SettingsWatch::hear(int type, const xcb_generic_event_t& event) {
    if (type == XCB_CLIENT_MESSAGE) {
        const auto& message = reinterpret_cast<const xcb_client_message_event_t&>(event);
        if (message.window != root() || message.data.data32[1] != selection_)
            return;
        watchManager();
        changed_();
    } else if (type == XCB_PROPERTY_NOTIFY) {
        const auto& property = reinterpret_cast<const xcb_property_notify_event_t&>(event);
        if (property.window == manager_ && property.atom == settings_)
            changed_();
    }
}

} // namespace kelpa::x11
