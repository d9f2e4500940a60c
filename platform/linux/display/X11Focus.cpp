#include "platform/linux/display/X11Focus.h"

namespace kelpa {

namespace {

/// The request comes from something like a pager: the user wants it, no window asked for it.
constexpr std::uint32_t fromUser = 2;
constexpr std::uint32_t mostClients = 4096;

} // namespace

void X11Focus::remember() {
    if (kept_)
        return;
    const auto cookie = xcb_get_input_focus(connection_.get());
    const auto focus = connection_.reply<xcb_get_input_focus_reply_t>(cookie);
    connection_.settle();
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
    connection_.settle();
    if (!focus || focus->focus <= XCB_INPUT_FOCUS_POINTER_ROOT || focus->focus == connection_.root())
        return false;
    const auto attributes = xcb_get_window_attributes(connection_.get(), focus->focus);
    const auto reply = connection_.reply<xcb_get_window_attributes_reply_t>(attributes);
    connection_.settle();
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE && reply->override_redirect == 0;
}

bool X11Focus::canHaveFocus(xcb_window_t window) {
    if (window <= XCB_INPUT_FOCUS_POINTER_ROOT)
        return true;
    const auto cookie = xcb_get_window_attributes(connection_.get(), window);
    const auto reply = connection_.reply<xcb_get_window_attributes_reply_t>(cookie);
    connection_.settle();
    return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
}

/// The window that had the focus is gone: the window manager chooses as if the user had clicked the topmost.
void X11Focus::activateTopmost() {
    xcb_connection_t* x = connection_.get();
    const auto cookie =
        xcb_get_property(x, 0, connection_.root(), connection_.atom("_NET_CLIENT_LIST_STACKING"),
                         XCB_ATOM_WINDOW, 0, mostClients);
    const auto reply = connection_.reply<xcb_get_property_reply_t>(cookie);
    connection_.settle();
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

} // namespace kelpa
