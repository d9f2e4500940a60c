#include "platform/linux/display/X11Connection.h"
#include "platform/linux/events/DesktopActivity.h"

#include <utility>
#include <xcb/xinput.h>

// The library's header uses a word as a name that C++ keeps for itself, and clang warns of the way around
// that.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wpragmas"
#pragma GCC diagnostic ignored "-Wkeyword-macro"
#define explicit explicit_
#include <xcb/xkb.h>
#undef explicit
#pragma GCC diagnostic pop

namespace kelpa {

namespace {

/// Raw events that come whoever has grabbed the pointer need this much of the extension.
constexpr std::uint16_t inputMajor = 2;
constexpr std::uint16_t inputMinor = 2;
constexpr std::uint32_t leftButton = 1;
constexpr std::uint32_t rightButton = 3;
/// The first two axes move the pointer; wheels turn on others.
constexpr std::uint32_t pointerAxes = 0b11;
constexpr double lookSeconds = 1.0;
/// A window manager's frame, the program's window in it, and some more for those who nest deeper.
constexpr int deepestWindow = 6;

/// The mouse and the modifier keys of an X server: the main buttons, motion, and the state of the modifiers.
/// Which key is pressed never reaches this program.
///
/// A moving mouse sends up to a thousand events a second. One is enough: the server is told to keep the rest
/// to itself, and a second later the pointer's place tells whether the mouse went on.
class X11Activity final : public ActivitySource {
  public:
    X11Activity(EventLoop& loop, ActivityGate gate, const OwnWindows& windows)
        : loop_(loop), gate_(std::move(gate)), windows_(windows) {}
    ~X11Activity() override {
        if (look_)
            look_->cancel();
    }

    [[nodiscard]] std::string name() const override { return "the X server (XInput 2)"; }
    Start start(ActivitySink& sink) override {
        sink_ = &sink;
        connection_ = X11Connection::open(loop_, [this] { sink_->sourceFailed("the X server is gone"); });
        if (!connection_ || !queryInput())
            return Start::Absent;
        pid_ = connection_->atom("_NET_WM_PID");
        events_ = connection_->listen([this](const xcb_generic_event_t& event) { handle(event); });
        select(Motion::Heard);
        watchModifiers();
        return Start::Watching;
    }

  private:
    using RawEvent = xcb_input_raw_button_press_event_t;
    enum class Motion { Heard, Kept };
    struct Pointer {
        int x = 0;
        int y = 0;
        xcb_window_t window = XCB_WINDOW_NONE; ///< the top-level one beneath it
    };

    [[nodiscard]] bool queryInput() {
        const auto* extension = connection_->extension(xcb_input_id);
        if (extension == nullptr)
            return false;
        inputOpcode_ = extension->major_opcode;
        const auto version = connection_->ask<xcb_input_xi_query_version_reply_t>(xcb_input_xi_query_version,
                                                                                  inputMajor, inputMinor);
        return version && (version->major_version > inputMajor ||
                           (version->major_version == inputMajor && version->minor_version >= inputMinor));
    }

    /// The server tells when a modifier goes down or up, and nothing of any other key.
    void watchModifiers() {
        const auto* extension = connection_->extension(xcb_xkb_id);
        if (extension == nullptr)
            return;
        const auto reply = connection_->ask<xcb_xkb_use_extension_reply_t>(
            xcb_xkb_use_extension, XCB_XKB_MAJOR_VERSION, XCB_XKB_MINOR_VERSION);
        if (!reply || reply->supported == 0)
            return;
        keyboardEvent_ = extension->first_event;
        xcb_xkb_select_events_details_t details{};
        details.affectState = details.stateDetails = XCB_XKB_STATE_PART_MODIFIER_BASE;
        xcb_xkb_select_events_aux(connection_->get(), XCB_XKB_ID_USE_CORE_KBD,
                                  XCB_XKB_EVENT_TYPE_STATE_NOTIFY, 0, 0, 0, 0, &details);
        xcb_flush(connection_->get());
    }

    void select(Motion motion) {
        std::uint32_t mask =
            XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_PRESS | XCB_INPUT_XI_EVENT_MASK_RAW_BUTTON_RELEASE;
        if (motion == Motion::Heard)
            mask |= XCB_INPUT_XI_EVENT_MASK_RAW_MOTION;
        selectRawEvents(connection_->get(), connection_->root(), mask);
    }

    void handle(const xcb_generic_event_t& event) {
        const std::uint8_t type = typeOf(event);
        if (type == XCB_GE_GENERIC)
            handleRaw(reinterpret_cast<const xcb_ge_generic_event_t&>(event));
        else if (keyboardEvent_ != 0 && type == keyboardEvent_)
            handleModifiers(event);
    }

    void handleRaw(const xcb_ge_generic_event_t& event) {
        if (event.extension != inputOpcode_)
            return;
        const auto& raw = reinterpret_cast<const RawEvent&>(event);
        if (event.event_type == XCB_INPUT_RAW_MOTION)
            handleMotion(raw);
        else if ((event.event_type == XCB_INPUT_RAW_BUTTON_PRESS ||
                  event.event_type == XCB_INPUT_RAW_BUTTON_RELEASE) &&
                 (raw.detail == leftButton || raw.detail == rightButton) && gate_())
            report(overOwnWindow(pointer().window));
    }

    /// The rest of this second is not wanted, also not of a wheel, whose turning does not count.
    void handleMotion(const RawEvent& raw) {
        if (look_)
            return;
        keepMotion();
        if (!gate_())
            return;
        last_ = pointer();
        const auto* axes = xcb_input_raw_button_press_valuator_mask(&raw);
        if (raw.valuators_len > 0 && (*axes & pointerAxes) != 0)
            report(overOwnWindow(last_.window));
    }

    /// A state that a program changed, and no key, is nobody's activity.
    void handleModifiers(const xcb_generic_event_t& event) {
        const auto& state = reinterpret_cast<const xcb_xkb_state_notify_event_t&>(event);
        if (state.xkbType == XCB_XKB_STATE_NOTIFY && state.keycode != 0 && gate_())
            report(focusInOwnWindow());
    }

    void keepMotion() {
        select(Motion::Kept);
        look_ = std::make_shared<WorkItem>([this] { look(); });
        loop_.asyncAfter(lookSeconds, look_);
    }

    /// A mouse that moved on since it was looked at last is looked at again in a second; one that rests wakes
    /// us when it moves again.
    void look() {
        look_ = nullptr;
        if (gate_() && pointerMoved()) {
            keepMotion();
            return report(overOwnWindow(last_.window));
        }
        select(Motion::Heard);
        // What moved between the look and the server's knowing that we listen again must not be missed.
        if (gate_() && pointerMoved())
            report(overOwnWindow(last_.window));
    }

    [[nodiscard]] bool pointerMoved() {
        const Pointer before = last_;
        last_ = pointer();
        return last_.x != before.x || last_.y != before.y;
    }

    void report(bool inOwnWindow) {
        if (!inOwnWindow)
            sink_->deskUsed();
    }

    [[nodiscard]] Pointer pointer() {
        const auto reply =
            connection_->ask<xcb_query_pointer_reply_t>(xcb_query_pointer, connection_->root());
        return reply ? Pointer{reply->root_x, reply->root_y, reply->child} : last_;
    }

    [[nodiscard]] xcb_window_t childUnderPointer(xcb_window_t window) {
        const auto reply = connection_->ask<xcb_query_pointer_reply_t>(xcb_query_pointer, window);
        return reply ? reply->child : static_cast<xcb_window_t>(XCB_WINDOW_NONE);
    }

    /// Nothing is asked while no window of ours is there, which is nearly always.
    [[nodiscard]] bool overOwnWindow(xcb_window_t window) {
        if (!windows_.anyVisible())
            return false;
        for (int depth = 0; depth < deepestWindow && window != XCB_WINDOW_NONE; ++depth) {
            if (own(window))
                return true;
            window = childUnderPointer(window);
        }
        return false;
    }

    [[nodiscard]] bool focusInOwnWindow() {
        if (!windows_.anyVisible())
            return false;
        const auto focus = connection_->ask<xcb_get_input_focus_reply_t>(xcb_get_input_focus);
        return focus && focus->focus > XCB_INPUT_FOCUS_POINTER_ROOT && own(focus->focus);
    }

    [[nodiscard]] bool own(xcb_window_t window) {
        const auto pid = connection_->numbers(window, pid_, XCB_ATOM_CARDINAL);
        const auto view = static_cast<std::uint32_t>(windows_.viewPid());
        return view != 0 && !pid.empty() && pid[0] == view;
    }

    EventLoop& loop_;
    ActivityGate gate_;
    const OwnWindows& windows_;
    ActivitySink* sink_ = nullptr;
    std::unique_ptr<X11Connection> connection_;
    std::uint8_t inputOpcode_ = 0;
    std::uint8_t keyboardEvent_ = 0; ///< 0 where the modifiers cannot be watched
    xcb_atom_t pid_ = XCB_ATOM_NONE;
    std::shared_ptr<WorkItem> look_; ///< pending while the server keeps motion to itself
    Pointer last_;
    Subscription events_;
};

} // namespace

std::unique_ptr<ActivitySource> makeX11Activity(EventLoop& loop, ActivityGate gate,
                                                const OwnWindows& windows) {
    return std::make_unique<X11Activity>(loop, std::move(gate), windows);
}

} // namespace kelpa
