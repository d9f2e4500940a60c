#include "platform/linux/display/X11Connection.h"
#include "platform/linux/events/DesktopLock.h"

#include <memory>
#include <utility>

namespace kelpa {

namespace {

constexpr xcb_window_t nobody = XCB_WINDOW_NONE;

class X11Lock {
  public:
    X11Lock(X11Connection& connection, std::function<void(bool)> says, std::function<void()> gone)
        : connection_(connection), says_(std::move(says)), gone_(std::move(gone)),
          status_(connection.atom("_SCREENSAVER_STATUS")), lock_(connection.atom("LOCK")) {
        connection_.selectRoot(XCB_EVENT_MASK_PROPERTY_CHANGE);
        events_ = connection_.listen([this](const xcb_generic_event_t& event) { handle(event); });
        look();
    }

  private:
    void handle(const xcb_generic_event_t& event) {
        const std::uint8_t type = typeOf(event);
        if (type == XCB_PROPERTY_NOTIFY) {
            const auto& change = reinterpret_cast<const xcb_property_notify_event_t&>(event);
            if (change.window == connection_.root() && change.atom == status_)
                look();
        } else if (type == XCB_DESTROY_NOTIFY && saver_ != nobody) {
            const auto& end = reinterpret_cast<const xcb_destroy_notify_event_t&>(event);
            if (end.window == saver_) {
                saver_ = nobody;
                gone_();
            }
        }
    }

    /// The property outlives the screen saver that wrote it: without one nobody holds the screen locked.
    void look() {
        const bool said = saver_ != nobody;
        const bool locked = propertySaysLocked();
        if (locked == said || connection_.standsStill())
            return;
        saver_ = locked ? findSaver() : nobody;
        if ((saver_ != nobody) != said)
            says_(!said);
    }

    /// Its first number is the atom "LOCK", "BLANK" while the screen is dark but not locked, and else 0.
    [[nodiscard]] bool propertySaysLocked() {
        const auto status = connection_.numbers(connection_.root(), status_, XCB_ATOM_INTEGER);
        return !status.empty() && status[0] == lock_;
    }

    /// It has a window that is never shown and bears its version. We hear from now on of that window's end.
    [[nodiscard]] xcb_window_t findSaver() {
        const xcb_atom_t version = connection_.atom("_SCREENSAVER_VERSION");
        const auto windows = topWindows();
        std::vector<xcb_get_property_cookie_t> questions;
        questions.reserve(windows.size());
        for (const xcb_window_t window : windows)
            questions.push_back(
                xcb_get_property(connection_.get(), 0, window, version, XCB_GET_PROPERTY_TYPE_ANY, 0, 0));
        xcb_window_t found = nobody;
        for (std::size_t i = 0; i < windows.size(); ++i)
            if (const auto answer = connection_.reply<xcb_get_property_reply_t>(questions[i]);
                answer && answer->type != XCB_ATOM_NONE)
                found = windows[i];
        if (found != nobody) {
            constexpr std::uint32_t mask = XCB_EVENT_MASK_STRUCTURE_NOTIFY;
            xcb_change_window_attributes(connection_.get(), found, XCB_CW_EVENT_MASK, &mask);
            xcb_flush(connection_.get());
        }
        return found;
    }

    [[nodiscard]] std::vector<xcb_window_t> topWindows() {
        const auto tree = connection_.ask<xcb_query_tree_reply_t>(xcb_query_tree, connection_.root());
        if (!tree)
            return {};
        const auto* first = xcb_query_tree_children(tree.get());
        return {first, first + xcb_query_tree_children_length(tree.get())};
    }

    X11Connection& connection_;
    std::function<void(bool)> says_;
    std::function<void()> gone_;
    xcb_atom_t status_, lock_;
    xcb_window_t saver_ = XCB_WINDOW_NONE; ///< the window of whoever holds the screen locked; else none
    Subscription events_;
};

} // namespace

std::shared_ptr<void> watchX11Lock(X11Connection& connection, std::function<void(bool locked)> says,
                                   std::function<void()> gone) {
    return std::make_shared<X11Lock>(connection, std::move(says), std::move(gone));
}

} // namespace kelpa
