#pragma once

#include "platform/linux/EventLoop.h"

#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <string>
#include <vector>
#include <wayland-client.h>

namespace kelpa {

/// Something that the compositor offers, under a number that is its own for as long as it is there.
struct WaylandGlobal {
    std::uint32_t number = 0;
    std::string interface;
    std::uint32_t version = 0;
};

/// Hears what the compositor offers, always from the main loop.
class WaylandGlobals {
  public:
    virtual ~WaylandGlobals() = default;
    virtual void came(const WaylandGlobal& global) = 0;
    virtual void went(std::uint32_t number) = 0;
};

/// The program's own connection to the Wayland compositor, read on the main loop.
class WaylandConnection {
  public:
    /// Null when no compositor answers at $WAYLAND_DISPLAY. `lost` runs once from the main loop when it goes
    /// away; the connection is dead from then on.
    static std::unique_ptr<WaylandConnection> open(EventLoop& loop, std::function<void()> lost);
    /// Whether a compositor takes connections there.
    [[nodiscard]] static bool reachable(EventLoop& loop);
    ~WaylandConnection();
    WaylandConnection(const WaylandConnection&) = delete;
    WaylandConnection& operator=(const WaylandConnection&) = delete;

    /// Tells `globals` of what is offered now, and of what comes and goes until the handle ends, which must
    /// be before the connection and not from inside a call.
    Subscription listen(WaylandGlobals& globals);
    /// What is offered by that name now; null where nothing is. For the moment only: it may go.
    [[nodiscard]] const WaylandGlobal* offer(const std::string& interface) const;
    /// Runs `told` once, from the main loop, when the compositor has dealt with all that was asked for until
    /// now. The handle, which may end inside of `told`, ends that and must end before the connection.
    Subscription whenAnswered(std::function<void()> told);
    /// Gives the object behind an offer, in the version that is asked for or the compositor's where that is
    /// lower. Null only when memory is out.
    template <typename Object>
    Object* bind(const WaylandGlobal& global, const wl_interface& interface, std::uint32_t version) {
        return static_cast<Object*>(bindAny(global, interface, version));
    }
    /// Sends what was asked for and waits for the answers, before the loop runs. False when the connection is
    /// dead.
    bool roundTrip();
    /// Sends what was asked for; to be called after requests outside of the connection's own callbacks.
    void flush();

  private:
    WaylandConnection(EventLoop& loop, wl_display* display, std::function<void()> lost);
    void* bindAny(const WaylandGlobal& global, const wl_interface& interface, std::uint32_t version);
    void came(const WaylandGlobal& global);
    void went(std::uint32_t number);
    void dispatch();

    EventLoop& loop_;
    wl_display* display_;
    wl_registry* registry_;
    std::function<void()> lost_;
    std::vector<WaylandGlobal> offered_;
    std::list<WaylandGlobals*> listeners_;
    Subscription readable_;
};

} // namespace kelpa
