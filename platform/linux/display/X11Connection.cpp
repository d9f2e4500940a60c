#include "platform/linux/display/X11Connection.h"

#include <poll.h>
#include <utility>
#include <xcb/xcbext.h>

namespace kelpa {

namespace {

/// A server that has not answered by then is not kept waiting for; the end of the program must not be.
constexpr std::uint64_t patienceMicroseconds = 800'000;
/// So long nothing is waited for then, unless the server says something before.
constexpr std::uint64_t pauseMicroseconds = 10'000'000;

const xcb_screen_t* screenOf(xcb_connection_t* connection, int number) {
    auto screens = xcb_setup_roots_iterator(xcb_get_setup(connection));
    while (number-- > 0 && screens.rem > 1)
        xcb_screen_next(&screens);
    return screens.data;
}

} // namespace

std::unique_ptr<X11Connection> X11Connection::open(EventLoop& loop, std::function<void()> lost) {
    int number = 0;
    xcb_connection_t* connection = nullptr;
    loop.interruptibly([&] { connection = xcb_connect(nullptr, &number); });
    if (xcb_connection_has_error(connection) != 0) {
        xcb_disconnect(connection);
        return nullptr;
    }
    return std::unique_ptr<X11Connection>(new X11Connection(loop, connection, number, std::move(lost)));
}

X11Connection::X11Connection(EventLoop& loop, xcb_connection_t* connection, int screenNumber,
                             std::function<void()> lost)
    : loop_(loop), connection_(connection), screenNumber_(screenNumber),
      screen_(screenOf(connection, screenNumber)), lost_(std::move(lost)),
      readable_(loop.watch(xcb_get_file_descriptor(connection), [this] {
          standsStill_ = false;
          drain();
      })) {}

X11Connection::~X11Connection() {
    readable_.cancel();
    xcb_disconnect(connection_);
}

xcb_atom_t X11Connection::atom(const std::string& name) {
    const auto answer = reply<xcb_intern_atom_reply_t>(
        xcb_intern_atom(connection_, 0, static_cast<std::uint16_t>(name.size()), name.c_str()));
    return answer ? answer->atom : static_cast<xcb_atom_t>(XCB_ATOM_NONE);
}

const xcb_query_extension_reply_t* X11Connection::extension(xcb_extension_t& extension) {
    const xcb_query_extension_reply_t* data = nullptr;
    loop_.interruptibly([&] { data = xcb_get_extension_data(connection_, &extension); });
    return data != nullptr && data->present != 0 ? data : nullptr;
}

void* X11Connection::await(unsigned sequence) {
    void* answer = nullptr;
    if (loop_.started())
        answer = awaitForAMoment(sequence);
    else
        loop_.interruptibly([&] { answer = xcb_wait_for_reply(connection_, sequence, nullptr); });
    drainSoon();
    return answer;
}

void* X11Connection::awaitForAMoment(unsigned sequence) {
    std::uint64_t now = monotonicMicroseconds();
    const std::uint64_t end = now + patienceMicroseconds;
    standsStill_ = standsStill_ && now < waitAgainAt_;
    void* answer = nullptr;
    xcb_generic_error_t* error = nullptr;
    if (!standsStill_)
        xcb_flush(connection_);
    while (!standsStill_ && xcb_poll_for_reply(connection_, sequence, &answer, &error) == 0) {
        pollfd server{xcb_get_file_descriptor(connection_), POLLIN, 0};
        poll(&server, 1, static_cast<int>((end - now) / 1000 + 1));
        now = monotonicMicroseconds();
        standsStill_ = now >= end;
        waitAgainAt_ = now + pauseMicroseconds;
    }
    if (standsStill_)
        xcb_discard_reply(connection_, sequence);
    std::free(error);
    return answer;
}

Subscription X11Connection::listen(Handler handler) {
    const auto place = handlers_.insert(handlers_.end(), std::move(handler));
    return Subscription([this, place] { handlers_.erase(place); });
}

std::vector<std::uint32_t> X11Connection::numbers(xcb_window_t window, xcb_atom_t property, xcb_atom_t type,
                                                  std::uint32_t most) {
    const auto answer = ask<xcb_get_property_reply_t>(xcb_get_property, 0, window, property, type, 0, most);
    if (!answer)
        return {};
    const auto* first = static_cast<const std::uint32_t*>(xcb_get_property_value(answer.get()));
    return {first,
            first + static_cast<std::size_t>(xcb_get_property_value_length(answer.get())) / sizeof *first};
}

void X11Connection::selectRoot(std::uint32_t mask) {
    rootMask_ |= mask;
    xcb_change_window_attributes(connection_, root(), XCB_CW_EVENT_MASK, &rootMask_);
    xcb_flush(connection_);
}

/// Events that come with an answer would otherwise lie there until the next one comes.
void X11Connection::drainSoon() {
    if (!standsStill_ && !draining_.active())
        draining_ = loop_.afterReal(0, [this] {
            draining_.cancel();
            drain();
        });
}

void X11Connection::drain() {
    while (const X11Reply<xcb_generic_event_t> event{xcb_poll_for_event(connection_)})
        for (const Handler& handler : handlers_)
            handler(*event);
    if (xcb_connection_has_error(connection_) == 0)
        return;
    readable_.cancel();
    if (const auto lost = std::exchange(lost_, nullptr))
        lost();
}

} // namespace kelpa
