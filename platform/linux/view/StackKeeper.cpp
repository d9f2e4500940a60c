#include "platform/linux/view/StackKeeper.h"

#include "platform/linux/view/X11.h"

#include <QGuiApplication>
#include <algorithm>
#include <chrono>

namespace kelpa::view {

using namespace std::chrono_literals;

namespace {

constexpr auto burst = 100ms;
constexpr int mostAnswers = 20;
constexpr auto answersForgotten = 1min;
constexpr std::uint8_t sentEventBit = 0x80;

/// The top-level window that an event puts on the screen or moves in the stack; none for other events.
xcb_window_t climber(const xcb_generic_event_t& event) {
    switch (event.response_type & ~sentEventBit) {
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

StackKeeper::StackKeeper(QObject* parent) : QObject(parent) {
    soon_.setInterval(burst);
    soon_.setSingleShot(true);
    soon_.callOnTimeout([this] { raiseAll(); });
}

void StackKeeper::keep(std::vector<xcb_window_t> windows) {
    if (windows == windows_ || x11::connection() == nullptr)
        return;
    if (windows_.empty())
        qApp->installNativeEventFilter(this);
    if (windows.empty())
        qApp->removeNativeEventFilter(this);
    if (windows.empty() != windows_.empty())
        x11::watchRoot(XCB_EVENT_MASK_SUBSTRUCTURE_NOTIFY, !windows.empty());
    windows_ = std::move(windows);
    answers_.clear();
    raiseAll();
}

bool StackKeeper::isOurs(xcb_window_t window) const {
    return std::find(windows_.begin(), windows_.end(), window) != windows_.end();
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
}

bool StackKeeper::nativeEventFilter(const QByteArray& type, void* event, qintptr* /*result*/) {
    if (type != "xcb_generic_event_t")
        return false;
    const xcb_window_t window = climber(*static_cast<const xcb_generic_event_t*>(event));
    if (window != XCB_WINDOW_NONE && !isOurs(window) && !soon_.isActive())
        answer(window);
    return false;
}

} // namespace kelpa::view
