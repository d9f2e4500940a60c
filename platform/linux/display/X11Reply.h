#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>
#include <xcb/xinput.h>

namespace kelpa {

struct FreeReply {
    void operator()(void* reply) const { std::free(reply); }
};
/// What the X server answered; freed with the handle. Null when the request failed.
template <typename Reply>
using X11Reply = std::unique_ptr<Reply, FreeReply>;

/// What an event tells of, whether the server sent it by itself or for another program.
[[nodiscard]] inline std::uint8_t typeOf(const xcb_generic_event_t& event) {
    constexpr std::uint8_t sentByProgram = 0x80;
    return static_cast<std::uint8_t>(event.response_type & ~sentByProgram);
}

/// Asks for the raw events of `mask`, or for none where that is 0, whichever window has the focus. Master
/// devices speak for every device that is attached to them, also later.
inline void selectRawEvents(xcb_connection_t* connection, xcb_window_t root, std::uint32_t mask) {
    struct {
        xcb_input_event_mask_t head;
        std::uint32_t mask;
    } events = {{XCB_INPUT_DEVICE_ALL_MASTER, 1}, mask};
    xcb_input_xi_select_events(connection, root, 1, &events.head);
    xcb_flush(connection);
}

} // namespace kelpa
