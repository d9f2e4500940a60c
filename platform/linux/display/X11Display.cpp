#include "platform/linux/display/Display.h"

#include <algorithm>
#include <utility>
#include <xcb/randr.h>

namespace kelpa {

namespace {

/// Plugging a monitor in makes the server and the desktop tell of several steps.
constexpr double burstSeconds = 0.05;
constexpr double secondsBetweenTries = 1;

/// The request comes from something like a pager: the user wants it, no window asked for it.
constexpr std::uint32_t fromUser = 2;
constexpr std::uint32_t mostClients = 4096;
/// Kinds of a window, or states that it is in.
constexpr std::uint32_t mostWords = 64;
/// The workspace of a window that is on all of them.
constexpr std::uint32_t everyWorkspace = 0xFFFFFFFF;

/// The monitors that RandR tells of, also the ones that a person defined over a part of an output.
class X11Screens final : public Screens {
  public:
    /// Loop and connection outlive the screens.
    X11Screens(EventLoop& loop, X11Connection& connection)
        : loop_(loop), connection_(connection), hasMonitors_(knowsMonitors()) {
        // Every change of the monitors shows as a configuration of the root window, and that of one that was
        // defined by hand shows as nothing else.
        connection_.selectRoot(XCB_EVENT_MASK_STRUCTURE_NOTIFY);
        events_ = connection_.listen([this](const xcb_generic_event_t& event) {
            if (typeOf(event) == XCB_CONFIGURE_NOTIFY)
                burst_ = loop_.afterReal(burstSeconds, [this] { askAgain(); });
        });
        update(monitors());
    }

    [[nodiscard]] const Screen* mainScreen() override {
        const auto focus = connection_.ask<xcb_get_input_focus_reply_t>(xcb_get_input_focus);
        if (!focus || focus->focus <= XCB_INPUT_FOCUS_POINTER_ROOT || focus->focus == connection_.root())
            return first();
        const auto size = xcb_get_geometry(connection_.get(), focus->focus);
        const auto place =
            xcb_translate_coordinates(connection_.get(), focus->focus, connection_.root(), 0, 0);
        const auto geometry = connection_.reply<xcb_get_geometry_reply_t>(size);
        const auto origin = connection_.reply<xcb_translate_coordinates_reply_t>(place);
        if (!geometry || !origin)
            return first();
        const Screen* found = at(origin->dst_x + geometry->width / 2, origin->dst_y + geometry->height / 2);
        return found != nullptr ? found : first();
    }

  private:
    bool knowsMonitors() {
        if (connection_.extension(xcb_randr_id) == nullptr)
            return false;
        const auto version = connection_.ask<xcb_randr_query_version_reply_t>(xcb_randr_query_version, 1, 5);
        return version && (version->major_version > 1 || version->minor_version >= 5);
    }

    std::string atomName(xcb_atom_t atom) {
        const auto reply = connection_.ask<xcb_get_atom_name_reply_t>(xcb_get_atom_name, atom);
        if (!reply)
            return {};
        return {xcb_get_atom_name_name(reply.get()),
                static_cast<std::size_t>(xcb_get_atom_name_name_length(reply.get()))};
    }

    std::vector<Monitor> monitors() {
        if (!hasMonitors_)
            return {wholeRoot()};
        const auto reply =
            connection_.ask<xcb_randr_get_monitors_reply_t>(xcb_randr_get_monitors, connection_.root(), 1);
        std::vector<Monitor> result;
        if (!reply)
            return result;
        for (auto each = xcb_randr_get_monitors_monitors_iterator(reply.get()); each.rem > 0;
             xcb_randr_monitor_info_next(&each)) {
            const auto& info = *each.data;
            result.push_back(
                {atomName(info.name), {info.x, info.y, info.width, info.height}, info.primary != 0});
        }
        return result;
    }

    Monitor wholeRoot() {
        const auto reply = connection_.ask<xcb_get_geometry_reply_t>(xcb_get_geometry, connection_.root());
        return {"default", reply ? PixelRect{0, 0, reply->width, reply->height} : PixelRect{}, true};
    }

    /// A server that stands still takes no monitor away. It is asked again.
    void askAgain() {
        burst_.cancel();
        const auto now = monitors();
        if (connection_.standsStill())
            burst_ = loop_.afterReal(secondsBetweenTries, [this] { askAgain(); });
        else
            update(now);
    }

    EventLoop& loop_;
    X11Connection& connection_;
    bool hasMonitors_;
    Subscription burst_;
    Subscription events_;
};

/// Remembers the X window that has the input focus and gives it back.
class X11Focus final : public FocusMemory {
  public:
    /// The connection outlives the memory.
    explicit X11Focus(X11Connection& connection) : connection_(connection) {}

    void remember() override {
        if (!kept_)
            kept_ = connection_.ask<xcb_get_input_focus_reply_t>(xcb_get_input_focus);
    }

    void giveBack() override {
        if (!kept_)
            return;
        const auto kept = std::exchange(kept_, nullptr);
        if (othersHaveIt() || connection_.standsStill())
            return;
        if (canHaveFocus(kept->focus))
            xcb_set_input_focus(connection_.get(), kept->revert_to, kept->focus, XCB_CURRENT_TIME);
        else
            activateTopmost();
        xcb_flush(connection_.get());
    }

  private:
    /// Our windows are beyond the window manager's reach; a window that it manages got the focus because the
    /// user or the window manager wanted so meanwhile.
    bool othersHaveIt() {
        const auto focus = connection_.ask<xcb_get_input_focus_reply_t>(xcb_get_input_focus);
        if (!focus || focus->focus <= XCB_INPUT_FOCUS_POINTER_ROOT || focus->focus == connection_.root())
            return false;
        const auto reply =
            connection_.ask<xcb_get_window_attributes_reply_t>(xcb_get_window_attributes, focus->focus);
        return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE && reply->override_redirect == 0;
    }

    bool canHaveFocus(xcb_window_t window) {
        if (window <= XCB_INPUT_FOCUS_POINTER_ROOT)
            return true;
        const auto reply =
            connection_.ask<xcb_get_window_attributes_reply_t>(xcb_get_window_attributes, window);
        return reply && reply->map_state == XCB_MAP_STATE_VIEWABLE;
    }

    /// Whether a property of the window lists the word.
    bool says(xcb_window_t window, const char* property, const char* word) {
        const auto words = connection_.numbers(window, connection_.atom(property), XCB_ATOM_ATOM, mostWords);
        return std::find(words.begin(), words.end(), connection_.atom(word)) != words.end();
    }

    /// Panels lie above the windows that people work in, and desktops below.
    bool isFurniture(xcb_window_t window) {
        return says(window, "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DOCK") ||
               says(window, "_NET_WM_WINDOW_TYPE", "_NET_WM_WINDOW_TYPE_DESKTOP");
    }

    /// To activate a minimised window brings it back, and one on another workspace takes people there.
    bool isPutAway(xcb_window_t window) {
        if (says(window, "_NET_WM_STATE", "_NET_WM_STATE_HIDDEN"))
            return true;
        const auto its = connection_.numbers(window, connection_.atom("_NET_WM_DESKTOP"), XCB_ATOM_CARDINAL);
        const auto shown = connection_.numbers(connection_.root(), connection_.atom("_NET_CURRENT_DESKTOP"),
                                               XCB_ATOM_CARDINAL);
        return !its.empty() && !shown.empty() && its[0] != everyWorkspace && its[0] != shown[0];
    }

    /// The window that had the focus is gone: the window manager chooses as if the user had clicked the
    /// topmost that is seen.
    void activateTopmost() {
        xcb_connection_t* x = connection_.get();
        const auto stack = connection_.numbers(
            connection_.root(), connection_.atom("_NET_CLIENT_LIST_STACKING"), XCB_ATOM_WINDOW, mostClients);
        xcb_set_input_focus(x, XCB_INPUT_FOCUS_POINTER_ROOT, XCB_INPUT_FOCUS_POINTER_ROOT, XCB_CURRENT_TIME);
        const auto topmost = std::find_if_not(stack.rbegin(), stack.rend(), [this](xcb_window_t window) {
            return isFurniture(window) || isPutAway(window);
        });
        if (topmost == stack.rend())
            return;
        xcb_client_message_event_t request{};
        request.response_type = XCB_CLIENT_MESSAGE;
        request.format = 32;
        request.window = *topmost;
        request.type = connection_.atom("_NET_ACTIVE_WINDOW");
        request.data.data32[0] = fromUser;
        xcb_send_event(x, 0, connection_.root(),
                       XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY | XCB_EVENT_MASK_SUBSTRUCTURE_REDIRECT,
                       reinterpret_cast<const char*>(&request));
    }

    X11Connection& connection_;
    X11Reply<xcb_get_input_focus_reply_t> kept_; ///< null for nothing
};

} // namespace

std::unique_ptr<Display> openX11Display(EventLoop& loop, std::function<void()> lost) {
    auto display = std::make_unique<Display>();
    display->x11 = X11Connection::open(loop, std::move(lost));
    if (!display->x11)
        return nullptr;
    display->screens = std::make_unique<X11Screens>(loop, *display->x11);
    display->focus = std::make_unique<X11Focus>(*display->x11);
    return display;
}

} // namespace kelpa
