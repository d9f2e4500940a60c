#pragma once

#include "platform/linux/EventLoop.h"

#include <functional>
#include <memory>
#include <string>
#include <systemd/sd-bus.h>
#include <vector>

namespace kelpa {

struct ReleaseSlot {
    void operator()(sd_bus_slot* slot) const { sd_bus_slot_unref(slot); }
};
/// Keeps an object, a match or a call with its callback alive; dropping it ends that.
using BusSlot = std::unique_ptr<sd_bus_slot, ReleaseSlot>;

struct ReleaseMessage {
    void operator()(sd_bus_message* message) const { sd_bus_message_unref(message); }
};
using BusMessage = std::unique_ptr<sd_bus_message, ReleaseMessage>;

/// Turns a member function into the callback that the bus library wants. The object is its user data and must
/// outlive the slot.
template <auto Member>
struct BusHandler;
template <typename Object, void (Object::*Member)(sd_bus_message*)>
struct BusHandler<Member> {
    static int call(sd_bus_message* message, void* object, sd_bus_error*) noexcept {
        (static_cast<Object*>(object)->*Member)(message);
        return 0;
    }
};
template <typename Object, int (Object::*Member)(sd_bus_message*, sd_bus_error*)>
struct BusHandler<Member> {
    static int call(sd_bus_message* message, void* object, sd_bus_error* error) noexcept {
        return (static_cast<Object*>(object)->*Member)(message, error);
    }
};

/// The program's connection to the desktop's session bus, served by the main loop. Nothing here ever waits
/// for the bus.
class SessionBus {
  public:
    /// Null when the session has no bus; `why` then says what is missing. The loop outlives the bus.
    static std::unique_ptr<SessionBus> open(EventLoop& loop, std::string& why);
    /// The same for the machine's bus, on which the system tells of the user's session.
    static std::unique_ptr<SessionBus> openSystem(EventLoop& loop, std::string& why);
    ~SessionBus();
    SessionBus(const SessionBus&) = delete;
    SessionBus& operator=(const SessionBus&) = delete;

    [[nodiscard]] sd_bus* handle() const { return bus_; }
    /// `lost` runs once, from the main loop, when the bus goes away, unless the handle ended before; from
    /// then on nothing arrives any more and what is sent is dropped.
    Subscription whenLost(std::function<void()> lost);

  private:
    explicit SessionBus(sd_bus* bus) : bus_(bus) {}
    using Opener = int (*)(sd_bus**);
    static std::unique_ptr<SessionBus> openWith(Opener opener, EventLoop& loop, std::string& why);
    void watchEnd();
    void disconnected(sd_bus_message* message);

    sd_bus* bus_;
    BusSlot end_;
    std::vector<std::weak_ptr<std::function<void()>>> lost_;
};

} // namespace kelpa
