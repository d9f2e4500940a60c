#pragma once

#include "platform/linux/EventLoop.h"

#include <functional>
#include <list>
#include <memory>
#include <string>
#include <systemd/sd-bus.h>

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

/// Has something on a bus that comes and goes with it. Told from the main loop, or by `Bus::join`.
class BusClient {
  public:
    virtual ~BusClient() = default;
    /// The bus is there: time for objects, matches and questions, of which it knows none yet.
    virtual void busOpened() = 0;
    /// The bus is gone: every slot of it is to be dropped.
    virtual void busLost() = 0;
};

/// The program's one connection to a bus, served by the main loop and made again when the bus comes back,
/// also when it was not there at first. Nothing here ever waits for the bus: a connection counts as open once
/// the bus has answered on it, and before that nothing is sent.
class Bus {
  public:
    enum class Kind {
        Session, ///< the desktop's
        System,  ///< the machine's, on which the system tells of the user's session
    };

    /// The loop outlives the bus.
    Bus(EventLoop& loop, Kind kind);
    ~Bus();
    Bus(const Bus&) = delete;
    Bus& operator=(const Bus&) = delete;

    /// Begins to connect; does nothing once that has begun.
    void start();
    [[nodiscard]] bool open() const { return !name_.empty(); }
    /// Null while the bus is not open.
    [[nodiscard]] sd_bus* handle() const { return open() ? connection_.get() : nullptr; }
    /// The name that the bus gave this connection; empty while it is not open.
    [[nodiscard]] const std::string& name() const { return name_; }
    /// What the last connection failed by, as the end of a sentence; empty while none has failed and when the
    /// bus is open.
    [[nodiscard]] const std::string& failure() const { return failure_; }

    /// Tells the client of the bus that is open, and of all that comes and goes until the handle ends.
    Subscription join(BusClient& client);

    /// Has `handler` called with `object` for every message that fits. Null while the bus is not open.
    [[nodiscard]] BusSlot match(const std::string& rule, sd_bus_message_handler_t handler,
                                void* object) const;
    /// Sends a call, whose answer or error goes to `handler`. Null when it cannot be sent.
    [[nodiscard]] BusSlot call(const BusMessage& message, sd_bus_message_handler_t handler,
                               void* object) const;

  private:
    struct CloseConnection {
        void operator()(sd_bus* connection) const;
    };

    void connect();
    int openConnection();
    int watchConnection();
    void answered(sd_bus_message* reply);
    void disconnected(sd_bus_message* message);
    void tryLater(const std::string& why);
    void drop();
    void tell(void (BusClient::*what)());

    EventLoop& loop_;
    Kind kind_;
    std::unique_ptr<sd_bus, CloseConnection> connection_; ///< null while nothing is tried
    std::string name_;
    std::string failure_;
    BusSlot end_;
    BusSlot greeting_;
    std::list<BusClient*> clients_;
    Subscription later_; ///< the next step: the end of patience, or the next try
    double pause_;
    double openedAt_ = 0;
};

} // namespace kelpa
