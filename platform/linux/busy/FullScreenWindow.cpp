#include "base/Text.h"
#include "platform/linux/busy/DesktopBusyness.h"
#include "platform/linux/display/WaylandConnection.h"
#include "platform/linux/display/X11Connection.h"

#include <algorithm>
#include <foreign-toplevel.h>
#include <list>
#include <memory>
#include <span>
#include <utility>

namespace kelpa {

namespace {

/// The first version that tells of full screens.
constexpr std::uint32_t listVersion = 2;
constexpr std::uint32_t mostStates = 64;

std::optional<std::string> unlessShown(bool activeWindow) {
    if (activeWindow)
        return std::nullopt;
    return localized("This desktop does not tell which window is active.");
}

/// Null where the compositor has no list, or one that says too little.
const WaylandGlobal* listOffer(const WaylandConnection& connection) {
    const WaylandGlobal* offer = connection.offer(zwlr_foreign_toplevel_manager_v1_interface.name);
    return offer != nullptr && offer->version >= listVersion ? offer : nullptr;
}

/// One window of a compositor's list.
struct Toplevel {
    zwlr_foreign_toplevel_handle_v1* handle;
    bool covers = false; ///< and is the active one

    explicit Toplevel(zwlr_foreign_toplevel_handle_v1* listed) : handle(listed) {
        using Handle = zwlr_foreign_toplevel_handle_v1;
        static constexpr zwlr_foreign_toplevel_handle_v1_listener listener{
            [](void*, Handle*, const char*) {},
            [](void*, Handle*, const char*) {},
            [](void*, Handle*, wl_output*) {},
            [](void*, Handle*, wl_output*) {},
            [](void* self, Handle*, wl_array* states) { static_cast<Toplevel*>(self)->setStates(*states); },
            [](void*, Handle*) {},
            [](void*, Handle*) {}};
        zwlr_foreign_toplevel_handle_v1_add_listener(handle, &listener, this);
    }
    ~Toplevel() { zwlr_foreign_toplevel_handle_v1_destroy(handle); }
    Toplevel(const Toplevel&) = delete;
    Toplevel& operator=(const Toplevel&) = delete;

    void setStates(const wl_array& states) {
        const std::span all(static_cast<const std::uint32_t*>(states.data),
                            states.size / sizeof(std::uint32_t));
        const auto has = [&all](std::uint32_t state) {
            return std::find(all.begin(), all.end(), state) != all.end();
        };
        covers = has(ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_ACTIVATED) &&
                 has(ZWLR_FOREIGN_TOPLEVEL_HANDLE_V1_STATE_FULLSCREEN);
    }
};

/// The list for as long as one question takes. The compositor tells of every window before it answers what
/// was asked after the list.
class ToplevelList {
  public:
    ToplevelList(WaylandConnection& connection, const WaylandGlobal& offer, BusySource::Answer answer)
        : manager_(connection.bind<zwlr_foreign_toplevel_manager_v1>(
              offer, zwlr_foreign_toplevel_manager_v1_interface, listVersion)),
          connection_(connection), answer_(std::move(answer)) {
        static constexpr zwlr_foreign_toplevel_manager_v1_listener listener{
            [](void* self, zwlr_foreign_toplevel_manager_v1*, zwlr_foreign_toplevel_handle_v1* listed) {
                static_cast<ToplevelList*>(self)->toplevels_.emplace_back(listed);
            },
            [](void*, zwlr_foreign_toplevel_manager_v1*) {}};
        zwlr_foreign_toplevel_manager_v1_add_listener(manager_, &listener, this);
        told_ = connection.whenAnswered([this] {
            answer_(std::any_of(toplevels_.begin(), toplevels_.end(),
                                [](const Toplevel& toplevel) { return toplevel.covers; }));
        });
    }
    ~ToplevelList() {
        zwlr_foreign_toplevel_manager_v1_stop(manager_);
        zwlr_foreign_toplevel_manager_v1_destroy(manager_);
        toplevels_.clear();
        connection_.flush();
    }

  private:
    zwlr_foreign_toplevel_manager_v1* manager_;
    WaylandConnection& connection_;
    BusySource::Answer answer_;
    std::list<Toplevel> toplevels_;
    Subscription told_;
};

bool covers(X11Connection& connection, xcb_window_t window) {
    const auto states =
        connection.numbers(window, connection.atom("_NET_WM_STATE"), XCB_ATOM_ATOM, mostStates);
    const xcb_atom_t fullScreen = connection.atom("_NET_WM_STATE_FULLSCREEN");
    return std::find(states.begin(), states.end(), fullScreen) != states.end();
}

/// The window that a property of the root window names.
xcb_window_t windowIn(X11Connection& connection, const char* property) {
    const auto window = connection.numbers(connection.root(), connection.atom(property), XCB_ATOM_WINDOW);
    return window.empty() ? static_cast<xcb_window_t>(XCB_WINDOW_NONE) : window[0];
}

} // namespace

BusySource fullScreenWindow(X11Connection& connection) {
    const auto ask = [&connection](const BusySource::Answer& answer) {
        const xcb_window_t active = windowIn(connection, "_NET_ACTIVE_WINDOW");
        answer(active != XCB_WINDOW_NONE && covers(connection, active));
        return Subscription();
    };
    return {ask, [&connection] {
                return unlessShown(windowIn(connection, "_NET_SUPPORTING_WM_CHECK") != XCB_WINDOW_NONE);
            }};
}

BusySource fullScreenWindow(WaylandConnection& connection) {
    const auto ask = [&connection](BusySource::Answer answer) {
        if (const WaylandGlobal* offer = listOffer(connection))
            return keeping(std::make_shared<ToplevelList>(connection, *offer, std::move(answer)));
        answer(false);
        return Subscription();
    };
    return {ask, [&connection] { return unlessShown(listOffer(connection) != nullptr); }};
}

} // namespace kelpa
