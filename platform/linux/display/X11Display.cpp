#include "platform/linux/display/X11Display.h"

#include <xcb/randr.h>

namespace kelpa {

namespace {

/// Plugging a monitor in makes the server and the desktop tell of several steps.
constexpr double burstSeconds = 0.05;
constexpr double secondsBetweenTries = 1;

/// The request comes from something like a pager: the user wants it, no window asked for it.
constexpr std::uint32_t fromUser = 2;
constexpr std::uint32_t mostClients = 4096;

} // namespace

X11Screens::X11Screens(EventLoop& loop, X11Connection& connection)
    : loop_(loop), connection_(connection), hasMonitors_(queryRandr()) {
    connection_.selectRoot(XCB_EVENT_MASK_STRUCTURE_NOTIFY);
    if (hasMonitors_)
        xcb_randr_select_input(connection_.get(), connection_.root(),
                               XCB_RANDR_NOTIFY_MASK_SCREEN_CHANGE | XCB_RANDR_NOTIFY_MASK_CRTC_CHANGE |
                                   XCB_RANDR_NOTIFY_MASK_OUTPUT_CHANGE);
    events_ = connection_.listen([this](const xcb_generic_event_t& event) { handle(event); });
    update(monitors());
}

bool X11Screens::queryRandr() {
    const auto* extension = connection_.extension(xcb_randr_id);
    if (extension == nullptr)
        return false;
    firstEvent_ = extension->first_event;
    const auto cookie = xcb_randr_query_version(connection_.get(), 1, 5);
    const auto version = connection_.reply<xcb_randr_query_version_reply_t>(cookie);
    return version && (version->major_version > 1 || version->minor_version >= 5);
}

std::string X11Screens::atomName(xcb_atom_t atom) {
    const auto cookie = xcb_get_atom_name(connection_.get(), atom);
    const auto reply = connection_.reply<xcb_get_atom_name_reply_t>(cookie);
    if (!reply)
        return {};
    return {xcb_get_atom_name_name(reply.get()),
            static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get()))};
}

std::vector<Monitor> X11Screens::monitors() {
    if (!hasMonitors_)
        return {wholeRoot()};
    const auto cookie = xcb_randr_get_monitors(connection_.get(), connection_.root(), 1);
    const auto reply = connection_.reply<xcb_randr_get_monitors_reply_t>(cookie);
    std::vector<Monitor> result;
    if (!reply)
        return result;
    for (auto each = xcb_randr_get_monitors_monitors_iterator(reply.get()); each.rem > 0;
         xcb_randr_monitor_info_next(&each)) {
        const auto& info = *each.data;
        result.push_back({atomName(info.name), {info.x, info.y, info.width, info.height}, info.primary != 0});
    }
    return result;
}

Monitor X11Screens::wholeRoot() {
    const auto cookie = xcb_get_geometry(connection_.get(), connection_.root());
    const auto reply = connection_.reply<xcb_get_geometry_reply_t>(cookie);
    return {"default", reply ? PixelRect{0, 0, reply->width, reply->height} : PixelRect{}, true};
}

void X11Screens::handle(const xcb_generic_event_t& event) {
    const std::uint8_t type = typeOf(event);
    // A monitor that was defined by hand shows only as a configuration of the root window.
    const bool randr = hasMonitors_ && (type == firstEvent_ + XCB_RANDR_SCREEN_CHANGE_NOTIFY ||
                                        type == firstEvent_ + XCB_RANDR_NOTIFY);
    if (randr || type == XCB_CONFIGURE_NOTIFY)
        burst_ = loop_.afterReal(burstSeconds, [this] { askAgain(); });
}

/// A server that stands still takes no monitor away. It is asked again.
void X11Screens::askAgain() {
    burst_.cancel();
    const auto now = monitors();
    if (connection_.standsStill())
        burst_ = loop_.afterReal(secondsBetweenTries, [this] { askAgain(); });
    else
        update(now);
}

const Screen* X11Screens::mainScreen() {
    const auto cookie = xcb_get_input_focus(connection_.get());
    const auto focus = connection_.reply<xcb_get_input_focus_reply_t>(cookie);
    if (!focus || focus->focus <= XCB_INPUT_FOCUS_POINTER_ROOT || focus->focus == connection_.root())
        return first();
    const auto size = xcb_get_geometry(connection_.get(), focus->focus);
    const auto place = xcb_translate_coordinates(connection_.get(), focus->focus, connection_.root(), 0, 0);
    const auto geometry = connection_.reply<xcb_get_geometry_reply_t>(size);
    const auto origin = connection_.reply<xcb_translate_coordinates_reply_t>(place);
    if (!geometry || !origin)
        return first();
    const Screen* found = at(origin->dst_x + geometry->width / 2, origin->dst_y + geometry->height / 2);
    return found != nullptr ? found : first();
}

void X11Focus::remember() {
    if (kept_)
        return;
    const auto cookie = xcb_get_input_focus(connection_.get());
    const auto focus = connection_.reply<xcb_get_input_focus_reply_t>(cookie);
    if (focus)
        kept_ = Focus{focus->focus, focus->revert_to};
}

void X11Focus::giveBack() {
    if (!kept_)
        return;
    const xcb_window_t window = kept_->window;
    const std::uint8_t revertTo = kept_->revertTo;
    kept_.reset();
    if (othersHaveIt() || connection_.standsStill())
        return;
    if (canHaveFocus(window))
        xcb_set_input_focus(connection_.get(), revertTo, window, XCB_CURRENT_TIME);
    else
        activateTopmost();
    xcb_flush(connection_.get());
}

/// Our windows are beyond the window manager's reach; a window that it manages got the focus because the user
/// or the window manager wanted so meanwhile.
bool X11Focus::othersHaveIt() {
    const auto cookie = xcb_get_input_focus(connection_.get());
    const auto focus = connection_.reply<xcb_get_input_focus_reply_t>(cookie);
    if (!focus || focus->focus <= XCB_INPUT_FOCUS_POINTER_ROOT || focus->focus == connection_.root())
        return false;
    const auto attributes = xcb_get_window_attributes(connection_.get(), focus->focus);
    const auto reply = connection_.reply<xcb_get_window_attributes_reply_t>(attributes);
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE && reply->override_redirect == 0;
}

bool X11Focus::canHaveFocus(xcb_window_t window) {
    if (window <= XCB_INPUT_FOCUS_POINTER_ROOT)
        return true;
    const auto cookie = xcb_get_window_attributes(connection_.get(), window);
    const auto reply = connection_.reply<xcb_get_window_attributes_reply_t>(cookie);
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

/// The window that had the focus is gone: the window manager chooses as if the user had clicked the topmost.
void X11Focus::activateTopmost() {
    xcb_connection_t* x = connection_.get();
    const auto cookie =
        xcb_get_property(x, 0, connection_.root(), connection_.atom("_NET_CLIENT_LIST_STACKING"),
                         XCB_ATOM_WINDOW, 0, mostClients);
    const auto reply = connection_.reply<xcb_get_property_reply_t>(cookie);
    const int bytes = reply ? xcb_get_property_value_length(reply.get()) : 0;
    const auto count = static_cast<std::size_t>(bytes) / sizeof(xcb_window_t);
    xcb_set_input_focus(x, XCB_INPUT_FOCUS_POINTER_ROOT, XCB_INPUT_FOCUS_POINTER_ROOT, XCB_CURRENT_TIME);
    if (count == 0)
        return;
    xcb_client_message_event_t request{};
    request.response_type = XCB_CLIENT_MESSAGE;
    request.format = 32;
    request.window = static_cast<const xcb_window_t*>(xcb_get_property_value(reply.get()))[count - 1];
    request.type = connection_.atom("_NET_ACTIVE_WINDOW");
    request.data.data32[0] = fromUser;
    xcb_send_event(x, 0, connection_.root(),
                   XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                   reinterpret_cast<const char*>(&request));
}

std::unique_ptr<X11Display> X11Display::open(EventLoop& loop, std::function<void()> lost) {
    auto connection = X11Connection::open(loop, std::move(lost));
    if (!connection)
        return nullptr;
    return std::unique_ptr<X11Display>(new X11Display(loop, std::move(connection)));
}

X11Display::X11Display(EventLoop& loop, std::unique_ptr<X11Connection> connection)
    : connection_(std::move(connection)), screens_(loop, *connection_), focus_(*connection_) {}

} // namespace kelpa
