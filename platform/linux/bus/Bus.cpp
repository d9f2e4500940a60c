#include "platform/linux/bus/Bus.h"

#include <algorithm>
#include <cstring>
#include <utility>

namespace kelpa {

namespace {

/// A bus that is started again is there after a moment; one that stays away is not asked for much.
constexpr double firstPause = 2;
constexpr double longestPause = 60;
/// A connection that lasted so long was a good one.
constexpr double proven = 60;
/// Somebody who takes connections and answers none of them is no bus.
constexpr double patience = 10;
/// So many messages lie unsent only where the bus takes none.
constexpr std::uint64_t mostUnsent = 16;

} // namespace

void Bus::CloseConnection::operator()(sd_bus* connection) const {
    sd_bus_detach_event(connection);
    // Without a flush: a bus that does not read any more must not hold up the end of the program.
    sd_bus_close_unref(connection);
}

Bus::Bus(EventLoop& loop, Kind kind) : loop_(loop), kind_(kind), pause_(firstPause) {}

Bus::~Bus() = default;

void Bus::start() {
    if (!connection_ && !later_.active())
        connect();
}

void Bus::connect() {
    const int result = openConnection();
    if (result < 0)
        return tryLater(std::strerror(-result));
    later_ = loop_.afterReal(patience, [this] { tryLater("it does not answer"); });
}

int Bus::openConnection() {
    const auto open = kind_ == Kind::Session ? sd_bus_open_user : sd_bus_open_system;
    sd_bus* made = nullptr;
    const int result = open(&made);
    if (result < 0)
        return result;
    connection_.reset(made);
    sd_bus_set_exit_on_disconnect(made, 0);
    // Or the loop would end only once the bus has read everything, or not been heard of for long.
    sd_bus_set_close_on_exit(made, 0);
    const int attached = sd_bus_attach_event(made, loop_.handle(), 0);
    return attached < 0 ? attached : watchConnection();
}

/// The library would greet the bus for as long as it likes before it sends anything, so we ask something
/// ourselves.
int Bus::watchConnection() {
    int result = 0;
    end_ = ownedBy<BusSlot>([&](auto** slot) {
        result = sd_bus_match_signal(connection_.get(), slot, nullptr, "/org/freedesktop/DBus/Local",
                                     "org.freedesktop.DBus.Local", "Disconnected",
                                     BusHandler<&Bus::disconnected>::call, this);
    });
    if (result < 0)
        return result;
    greeting_ = ownedBy<BusSlot>([&](auto** slot) {
        result =
            sd_bus_call_method_async(connection_.get(), slot, theBus.service, theBus.path, theBus.interface,
                                     "GetId", BusHandler<&Bus::answered>::call, this, "");
    });
    return result;
}

void Bus::answered(sd_bus_message* reply) {
    const char* name = nullptr;
    if (!isGood(reply) || sd_bus_get_unique_name(connection_.get(), &name) < 0)
        return;
    later_.cancel();
    name_ = name;
    failure_.clear();
    openedAt_ = monotonicSeconds();
    tell(&BusClient::busOpened);
}

/// The connection cannot be taken down inside of what it tells itself.
void Bus::disconnected(sd_bus_message*) {
    later_ = loop_.afterReal(0, [this] { tryLater("it closed the connection"); });
}

void Bus::tryLater(const std::string& why) {
    failure_ = why;
    drop();
    later_ = loop_.afterReal(pause_, [this] {
        later_.cancel();
        start();
    });
    pause_ = std::min(pause_ * 2, longestPause);
}

void Bus::drop() {
    const bool wasOpen = open();
    name_.clear();
    if (wasOpen && monotonicSeconds() - openedAt_ >= proven)
        pause_ = firstPause;
    if (wasOpen)
        tell(&BusClient::busLost);
    for (BusSlot* slot : {&greeting_, &end_, &catchingUp_})
        slot->reset();
    connection_.reset();
}

bool Bus::keepsUp() {
    std::uint64_t unsent = 0;
    if (!open() || catchingUp_ || sd_bus_get_n_queued_write(handle(), &unsent) < 0)
        return false;
    if (unsent > mostUnsent)
        catchingUp_ = call<&Bus::caughtUp>(newCall(theBus, "GetId"), *this, forEver);
    return unsent <= mostUnsent;
}

void Bus::caughtUp(sd_bus_message*) {
    catchingUp_.reset();
    tell(&BusClient::busCaughtUp);
}

Subscription Bus::join(BusClient& client) {
    clients_.push_back(&client);
    if (open())
        client.busOpened();
    return Subscription([this, &client] { clients_.remove(&client); });
}

/// Whoever is called may leave, and take others along.
void Bus::tell(void (BusClient::*what)()) {
    const std::list<BusClient*> all = clients_;
    for (BusClient* client : all)
        if (std::find(clients_.begin(), clients_.end(), client) != clients_.end())
            (client->*what)();
}

BusSlot Bus::matchWith(const std::string& rule, sd_bus_message_handler_t handler, void* object) const {
    return ownedBy<BusSlot>([&](auto** slot) {
        if (open())
            sd_bus_add_match_async(handle(), slot, rule.c_str(), handler, nullptr, object);
    });
}

BusSlot Bus::callWith(const BusMessage& message, sd_bus_message_handler_t handler, void* object,
                      std::uint64_t microseconds) const {
    return ownedBy<BusSlot>([&](auto** slot) {
        if (open() && message)
            sd_bus_call_async(handle(), slot, message.get(), handler, object, microseconds);
    });
}

BusMessage Bus::ask(const BusMessage& message, double seconds) const {
    struct Answer {
        BusMessage message;
        void keep(sd_bus_message* reply) { message.reset(sd_bus_message_ref(reply)); }
    } answer;
    const BusSlot question = call<&Answer::keep>(message, answer);
    if (!question)
        return nullptr;
    loop_.runUntil([&answer] { return answer.message != nullptr; }, seconds);
    return std::move(answer.message);
}

void Bus::send(const BusMessage& message) const {
    if (open() && message)
        sd_bus_send(handle(), message.get(), nullptr);
}

BusSlot Bus::serve(const char* path, const char* interface, const sd_bus_vtable* vtable, void* object) const {
    return ownedBy<BusSlot>([&](auto** slot) {
        if (open())
            sd_bus_add_object_vtable(handle(), slot, path, interface, vtable, object);
    });
}

BusMessage Bus::emptyCall(const BusAddress& to, const char* member) const {
    auto call = ownedBy<BusMessage>([&](auto** made) {
        if (open())
            sd_bus_message_new_method_call(handle(), made, to.service, to.path, to.interface, member);
    });
    if (call)
        sd_bus_message_set_auto_start(call.get(), 0);
    return call;
}

BusMessage Bus::newSignal(const char* path, const char* interface, const char* member) const {
    return ownedBy<BusMessage>([&](auto** made) {
        if (open())
            sd_bus_message_new_signal(handle(), made, path, interface, member);
    });
}

NameOwner::NameOwner(const Bus& bus, const std::string& name, std::function<void(bool owned)> changed)
    : changed_(std::move(changed)),
      changes_(bus.match<&NameOwner::ownerChanged>(signalRule(theBus, "NameOwnerChanged", name), *this)),
      question_(
          bus.call<&NameOwner::lookedUp>(bus.newCall(theBus, "NameHasOwner", "s", name.c_str()), *this)) {}

void NameOwner::ownerChanged(sd_bus_message* signal) {
    const char *name = nullptr, *before = nullptr, *after = nullptr;
    if (readFrom(signal, "sss", &name, &before, &after))
        tell(*after != '\0');
}

/// A bus that does not know is no reason to give up on the owner.
void NameOwner::lookedUp(sd_bus_message* reply) {
    int owned = 0;
    if (readFrom(reply, "b", &owned) && owned == 0)
        tell(false);
}

void NameOwner::tell(bool owned) {
    const auto changed = changed_; // which stays when the object goes
    changed(owned);
}

} // namespace kelpa
