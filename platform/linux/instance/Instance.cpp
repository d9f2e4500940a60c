#include "platform/linux/instance/Instance.h"

#include "platform/linux/bus/Bus.h"
#include "platform/linux/control/ControlInterface.h"

#include <cstring>
#include <utility>

namespace kelpa {

namespace {

// What the bus answers when a name is asked for.
constexpr unsigned isOwner = 1, nameExists = 3, wasOwner = 4;
constexpr const char* noName = "The session bus does not give out the program's name";

} // namespace

Instance::Instance(EventLoop& loop, Bus& bus, StartWish wish) : loop_(loop), bus_(bus), wish_(wish) {
    if (const auto folder = lockFolder())
        lock_.emplace(*folder, lockName());
}

Instance::~Instance() = default;

Instance::Role Instance::claim() {
    if (const Role role = claimLock(); role != Role::First)
        return role;
    bus_.start();
    loop_.runUntil([this] { return bus_.open() || !bus_.failure().empty(); }, patience);
    if (loop_.ending())
        return Role::Ended;
    if (bus_.open())
        return claimName();
    if (!lock_ || lock_->state() != InstanceLock::State::Held)
        doubt_ = "Without a session bus and a lock nothing keeps a second Kelpa from starting";
    return Role::First;
}

std::optional<unsigned> Instance::requestName(unsigned flags) {
    const BusMessage answer = bus_.ask(bus_.newNameRequest(control::service, flags), patience);
    unsigned result = 0;
    return readFrom(answer.get(), "u", &result) ? std::optional(result) : std::nullopt;
}

bool Instance::ownerShows() {
    const BusAddress owner = {control::service, control::path, control::interface};
    const char* method = wish_ == StartWish::History ? control::showHistory : control::showSettings;
    const BusMessage answer = bus_.ask(bus_.newCall(owner, method), patience);
    return isGood(answer.get());
}

Instance::Role Instance::claimName() {
    claimed_ = true;
    auto result = requestName(Bus::allowReplacement | Bus::doNotQueue);
    if (result == nameExists) {
        // A stale holder of the lock is the owner of the name as well.
        if (!lockWasStale_ && ownerShows())
            return Role::Second;
        if (loop_.ending())
            return Role::Ended;
        result = requestName(Bus::allowReplacement | Bus::replaceExisting | Bus::doNotQueue);
    }
    if (result != isOwner && result != wasOwner)
        doubt_ = noName;
    return loop_.ending() ? Role::Ended : Role::First;
}

Instance::Role Instance::claimLock() {
    if (!lock_)
        return Role::First;
    lock_->take();
    // Twice, should a third start come in between.
    for (int tries = 0; tries < 2 && lock_->state() == InstanceLock::State::HeldByAnother; ++tries) {
        if (lock_->askHolder(loop_, wish_, patience))
            return Role::Second;
        // Whoever has no time to wait for an answer learns nothing from having none.
        if (loop_.ending())
            return Role::Ended;
        if (lock_->state() == InstanceLock::State::HeldByAnother)
            lockWasStale_ = lock_->takeOver();
    }
    return Role::First;
}

void Instance::serve(InstanceClient& client) {
    client_ = &client;
    if (lock_)
        lock_->serve(loop_, client);
    joined_ = bus_.join(*this);
}

void Instance::busOpened() {
    losing_ = bus_.match<&Instance::nameLost>(signalRule(theBus, "NameLost"), *this);
    if (std::exchange(claimed_, true))
        return;
    claiming_ = bus_.call<&Instance::nameClaimed>(
        bus_.newNameRequest(control::service, Bus::allowReplacement | Bus::doNotQueue), *this);
}

void Instance::busLost() {
    claimed_ = false;
    claiming_.reset();
    losing_.reset();
}

/// While there was no bus, another display's Kelpa may have come to it first. Both go on.
void Instance::nameClaimed(sd_bus_message* reply) {
    unsigned result = 0;
    sd_bus_message_read(reply, "u", &result);
    if (result != isOwner && result != wasOwner)
        client_->doubted(noName);
}

void Instance::nameLost(sd_bus_message* message) {
    const char* name = nullptr;
    if (readFrom(message, "s", &name) && std::strcmp(name, control::service) == 0)
        client_->replaced();
}

} // namespace kelpa
