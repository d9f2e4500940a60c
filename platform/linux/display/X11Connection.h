#pragma once

#include "platform/linux/EventLoop.h"
#include "platform/linux/display/X11Reply.h"

#include <functional>
#include <list>
#include <memory>
#include <string>
#include <type_traits>
#include <vector>
#include <xcb/xcb.h>

namespace kelpa {

/// The program's own connection to the X server, read on the main loop.
class X11Connection {
  public:
    using Handler = std::function<void(const xcb_generic_event_t&)>;

    /// Null when no X server answers at $DISPLAY. `lost` runs once from the main loop when the server goes
    /// away; the connection is dead from then on.
    static std::unique_ptr<X11Connection> open(EventLoop& loop, std::function<void()> lost);
    ~X11Connection();
    X11Connection(const X11Connection&) = delete;
    X11Connection& operator=(const X11Connection&) = delete;

    [[nodiscard]] xcb_connection_t* get() const { return connection_; }
    [[nodiscard]] xcb_window_t root() const { return screen_->root; }
    [[nodiscard]] const xcb_screen_t& screen() const { return *screen_; }
    [[nodiscard]] int screenNumber() const { return screenNumber_; }
    [[nodiscard]] xcb_atom_t atom(const std::string& name);
    /// What the server says of an extension; null when it has no such thing. To be asked at the start.
    [[nodiscard]] const xcb_query_extension_reply_t* extension(xcb_extension_t& extension);
    /// What the server answers to a request, of the type that belongs to the request. Null when it refuses,
    /// when the connection is dead, and when the server stands still: once the loop has started that is found
    /// out after a moment, and then nothing is waited for until the server says something again.
    template <typename Reply, typename Cookie>
    [[nodiscard]] X11Reply<Reply> reply(Cookie cookie) {
        return X11Reply<Reply>(static_cast<Reply*>(await(cookie.sequence)));
    }
    /// The numbers of 32 bits, `most` of them, that a window's property begins with; none where it is of
    /// another type, or is not there.
    [[nodiscard]] std::vector<std::uint32_t> numbers(xcb_window_t window, xcb_atom_t property,
                                                     xcb_atom_t type, std::uint32_t most = 1);
    /// Sends a request with what it asks for behind the connection, and gives the answer like `reply`.
    template <typename Reply, typename Cookie, typename... Parameters>
    [[nodiscard]] X11Reply<Reply> ask(Cookie (*request)(xcb_connection_t*, Parameters...),
                                      std::type_identity_t<Parameters>... arguments) {
        return reply<Reply>(request(connection_, arguments...));
    }
    /// Whether the server owes an answer that is not waited for any more.
    [[nodiscard]] bool standsStill() const { return standsStill_; }
    /// Hands every event that comes to `handler` until the handle ends, which must be neither from inside a
    /// handler nor after the connection.
    Subscription listen(Handler handler);
    /// Adds to the events of the root window that the server sends us.
    void selectRoot(std::uint32_t mask);

  private:
    X11Connection(EventLoop& loop, xcb_connection_t* connection, int screenNumber,
                  std::function<void()> lost);
    void drain();
    void* await(unsigned sequence);
    void* awaitForAMoment(unsigned sequence);
    void drainSoon();

    EventLoop& loop_;
    xcb_connection_t* connection_;
    int screenNumber_;
    const xcb_screen_t* screen_ = nullptr;
    std::uint32_t rootMask_ = 0;
    bool standsStill_ = false;
    std::uint64_t waitAgainAt_ = 0; ///< for a server that stands still; microseconds of the monotonic clock
    std::function<void()> lost_;
    std::list<Handler> handlers_;
    Subscription readable_;
    Subscription draining_;
};

} // namespace kelpa
