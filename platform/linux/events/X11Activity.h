#pragma once

#include "platform/linux/display/X11Connection.h"
#include "platform/linux/events/DesktopActivity.h"

#include <cstdint>
#include <memory>
#include <xcb/xinput.h>

namespace kelpa {

/// The mouse and the modifier keys of an X server: the main buttons, motion, and the state of the modifiers.
/// Which key is pressed never reaches this program.
///
/// A moving mouse sends up to a thousand events a second. One is enough: the server is told to keep the rest
/// to itself, and a second later the pointer's place tells whether the mouse went on.
class X11Activity final : public ActivitySource {
  public:
    /// Loop and windows outlive the source.
    X11Activity(EventLoop& loop, ActivityGate gate, const OwnWindows& windows);
    ~X11Activity() override;

    [[nodiscard]] std::string name() const override { return "the X server (XInput 2)"; }
    Start start(ActivitySink& sink) override;

  private:
    using RawEvent = xcb_input_raw_button_press_event_t;
    enum class Motion { Heard, Kept };
    struct Pointer {
        int x = 0;
        int y = 0;
        xcb_window_t window = XCB_WINDOW_NONE; ///< the top-level one beneath it
    };

    [[nodiscard]] bool queryInput();
    void watchModifiers();
    void select(Motion motion);
    void handle(const xcb_generic_event_t& event);
    void handleRaw(const xcb_ge_generic_event_t& event);
    void handleMotion(const RawEvent& raw);
    void handleModifiers(const xcb_generic_event_t& event);
    void keepMotion();
    void look();
    [[nodiscard]] bool pointerMoved();

    void report(bool inOwnWindow);
    [[nodiscard]] Pointer pointer();
    [[nodiscard]] xcb_window_t childUnderPointer(xcb_window_t window);
    [[nodiscard]] bool overOwnWindow(xcb_window_t window);
    [[nodiscard]] bool focusInOwnWindow();
    [[nodiscard]] bool own(xcb_window_t window);

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

} // namespace kelpa
