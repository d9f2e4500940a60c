#pragma once

#include <cstdint>
#include <cstdlib>
#include <memory>
#include <xcb/xcb.h>

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

} // namespace kelpa
