#pragma once

#include "platform/linux/EventLoop.h"
#include "platform/linux/bus/BusMessage.h"

#include <cstdint>
#include <functional>
#include <list>
#include <memory>
#include <string>

namespace kelpa {

/// Keeps an object, a match or a call with its callback alive; dropping it ends that.
using BusSlot = std::unique_ptr<sd_bus_slot, ReleaseBy<sd_bus_slot_unref>>;

/// Turns a member function into the callback that the bus library wants. The object must outlive the slot.
template <auto Member>
struct BusHandler;
template <typename Class, typename Result, typename... Error,
          Result (Class::*Member)(sd_bus_message*, Error...)>
struct BusHandler<Member> {
    using Object = Class;
    static int call(sd_bus_message* message, void* object, [[maybe_unused]] sd_bus_error* error) noexcept {
        auto& self = *static_cast<Object*>(object);
        if constexpr (sizeof...(Error) > 0) {
            return (self.*Member)(message, error);
        } else {
            (self.*Member)(message);
            return 0;
        }
    }
};

/// Has something on a bus that comes and goes with it. Each verb is called from the main loop, or by
/// `Bus::join`.
class BusClient {
  public:
    virtual ~BusClient() = default;
    /// The bus is there: time for objects, matches and questions, of which it knows none yet.
    virtual void busOpened() = 0;
    /// The bus is gone: every slot of it is to be dropped.
    virtual void busLost() = 0;
    /// The bus, which did not keep up with what it was sent, has taken everything in.
    virtual void busCaughtUp() {}
};

/// The program's one connection to a bus, served by the main loop and made again when the bus comes back,
/// also when it was not there at first. Nothing here waits for the bus but `ask`: a connection counts as open
/// once the bus has answered on it, and before that nothing is sent.
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

    /// Calls the client now if the bus is open, and whenever the bus comes or goes until the handle ends.
    Subscription join(BusClient& client);

    /// Whether the bus takes in what it is sent. One that stands still does not, and what it is sent then is
    /// kept: so whoever announces changes asks first, holds them back, and announces how things are when
    /// `busCaughtUp` is called.
    [[nodiscard]] bool keepsUp();

    // What is made on a bus that is not open is null, and what is null is not sent.

    /// Calls `Handler` of `object` for every message that fits the rule.
    template <auto Handler>
    [[nodiscard]] BusSlot match(const std::string& rule, typename BusHandler<Handler>::Object& object) const {
        return matchWith(rule, BusHandler<Handler>::call, &object);
    }
    /// Sends a call and hands its answer, which may be an error, to `Handler` of `object`. Null when the call
    /// cannot be sent. `microseconds` is how long the answer is of use; as long as usual unless it is told.
    template <auto Handler>
    [[nodiscard]] BusSlot call(const BusMessage& message, typename BusHandler<Handler>::Object& object,
                               std::uint64_t microseconds = 0) const {
        return callWith(message, BusHandler<Handler>::call, &object, microseconds);
    }
    static constexpr std::uint64_t forEver = UINT64_MAX;
    /// Sends a call before the loop runs for good and waits for its answer, which may be an error. Null when
    /// none comes within `seconds`, however long bus and receiver hang, and when the loop is told to end.
    [[nodiscard]] BusMessage ask(const BusMessage& message, double seconds) const;
    /// Sends a signal, or a call whose answer nobody waits for.
    void send(const BusMessage& message) const;
    /// Puts an object with one interface on the bus. `object` is what the functions of `vtable` are given.
    [[nodiscard]] BusSlot serve(const char* path, const char* interface, const sd_bus_vtable* vtable,
                                void* object) const;
    /// A call that starts no program, with values of these types as the bus library reads them.
    template <typename... Values>
    [[nodiscard]] BusMessage newCall(const BusAddress& to, const char* member, const char* types = "",
                                     Values... values) const {
        BusMessage call = emptyCall(to, member);
        if (call && *types != '\0' && sd_bus_message_append(call.get(), types, values...) < 0)
            call.reset();
        return call;
    }
    /// A question for a property of an object's interface.
    [[nodiscard]] BusMessage newQuestion(const BusAddress& of, const char* property) const {
        return newCall({of.service, of.path, propertiesInterface}, "Get", "ss", of.interface, property);
    }
    /// A request for a name of the bus; `flags` are those of the bus.
    static constexpr unsigned allowReplacement = 1, replaceExisting = 2, doNotQueue = 4;
    [[nodiscard]] BusMessage newNameRequest(const std::string& name, unsigned flags) const {
        return newCall(theBus, "RequestName", "su", name.c_str(), flags);
    }
    [[nodiscard]] BusMessage newSignal(const char* path, const char* interface, const char* member) const;

  private:
    struct CloseConnection {
        void operator()(sd_bus* connection) const;
    };

    void connect();
    int openConnection();
    int watchConnection();
    void answered(sd_bus_message* reply);
    void disconnected(sd_bus_message* message);
    void caughtUp(sd_bus_message* reply);
    void tryLater(const std::string& why);
    void drop();
    void tell(void (BusClient::*what)());
    [[nodiscard]] BusSlot matchWith(const std::string& rule, sd_bus_message_handler_t handler,
                                    void* object) const;
    [[nodiscard]] BusSlot callWith(const BusMessage& message, sd_bus_message_handler_t handler, void* object,
                                   std::uint64_t microseconds) const;
    [[nodiscard]] BusMessage emptyCall(const BusAddress& to, const char* member) const;

    EventLoop& loop_;
    Kind kind_;
    std::unique_ptr<sd_bus, CloseConnection> connection_; ///< null while nothing is tried
    std::string name_;
    std::string failure_;
    BusSlot end_;
    BusSlot greeting_;
    BusSlot catchingUp_; ///< the question that the bus answers once it keeps up again
    std::list<BusClient*> clients_;
    Subscription later_; ///< the next step: the end of patience, or the next try
    double pause_;
    double openedAt_ = 0; ///< seconds on the monotonic clock
};

/// Watches whether anybody has a name on the bus. Whoever had it may have left before we could hear of that,
/// so the name is looked up once after we began to listen.
class NameOwner {
  public:
    /// `changed` runs from the main loop: when the name turns out to have no owner at the beginning, and on
    /// every change. It may end the object. The bus is open and outlives it.
    NameOwner(const Bus& bus, const std::string& name, std::function<void(bool owned)> changed);
    NameOwner(const NameOwner&) = delete;
    NameOwner& operator=(const NameOwner&) = delete;

  private:
    void ownerChanged(sd_bus_message* signal);
    void lookedUp(sd_bus_message* reply);
    void tell(bool owned);

    std::function<void(bool)> changed_;
    BusSlot changes_;
    BusSlot question_;
};

} // namespace kelpa
