#include "platform/linux/view/StackKeeper.h"

#include <algorithm>
#include <chrono>
#include <utility>

namespace kelpa::view {

using namespace std::chrono_literals;

namespace {

constexpr int mostAnswers = 20;
constexpr auto answersForgotten = 1min;

/// The top-level window that an event puts on the screen or moves in the stack; none for other events.
xcb_window_t climber(int type, const xcb_generic_event_t& event) {
    switch (type) {
    case XCB_MAP_NOTIFY:
        return reinterpret_cast<const xcb_map_notify_event_t&>(event).window;
    case XCB_CONFIGURE_NOTIFY:
        return reinterpret_cast<const xcb_configure_notify_event_t&>(event).window;
    case XCB_CIRCULATE_NOTIFY:
        return reinterpret_cast<const xcb_circulate_notify_event_t&>(event).window;
    default:
        return XCB_WINDOW_NONE;
    }
}

} // namespace

void StackKeeper::keep(std::vector<xcb_window_t> windows) {
    if (windows == windows_)
        return;
    listen(!windows.empty());
    if (windows.empty() != windows_.empty())
        x11::watchRoot(XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY, !windows.empty());
    windows_ = std::move(windows);
    keepBottom(!windows_.empty() && x11::composited());
    answers_.clear();
    raiseAll();
}

/// The compositors of GNOME, Cinnamon and Budgie show unmanaged windows in the order in which they came, and
/// see that it is another one now only when they find the managed windows out of order. To them they are, as
/// long as an unmanaged window is the lowest of all.
void StackKeeper::keepBottom(bool wanted) {
    if (wanted && bottom_ == XCB_WINDOW_NONE)
        bottom_ = x11::createUnseen();
    else if (!wanted && bottom_ != XCB_WINDOW_NONE)
        x11::destroy(std::exchange(bottom_, XCB_WINDOW_NONE));
}

bool StackKeeper::isOurs(xcb_window_t window) const {
    return window == bottom_ || std::find(windows_.begin(), windows_.end(), window) != windows_.end();
}

void StackKeeper::answer(xcb_window_t climber) {
    std::erase_if(answers_, [](const auto& each) { return each.second.forgotten.hasExpired(); });
    const auto [answers, first] = answers_.try_emplace(climber);
    if (first)
        answers->second.forgotten.setRemainingTime(answersForgotten);
    if (answers->second.given == mostAnswers)
        return;
    ++answers->second.given;
    soon_.start();
}

void StackKeeper::raiseAll() {
    for (const xcb_window_t window : windows_)
        x11::raise(window);
    if (bottom_ != XCB_WINDOW_NONE)
        x11::lower(bottom_);
}

void StackKeeper::hear(int type, const xcb_generic_event_t& event) {
    const xcb_window_t window = climber(type, event);
    if (window != XCB_WINDOW_NONE && !isOurs(window) && !soon_.isActive())
        answer(window);
}

} // namespace kelpa::view
