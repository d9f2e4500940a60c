#include "platform/linux/control/Instance.h"

#include "platform/linux/control/BusCall.h"
#include "platform/linux/control/ControlInterface.h"

#include <cstring>

namespace kelpa {

namespace {

// What the bus takes and gives when a name is asked for.
constexpr unsigned allowReplacement = 1, replaceExisting = 2, doNotQueue = 4;
constexpr unsigned isOwner = 1, nameExists = 3, wasOwner = 4;

} // namespace

Instance::Instance(EventLoop& loop) : loop_(loop) {
    if (const auto folder = lockFolder())
        lock_.emplace(*folder, lockName());
}

Instance::~Instance() = default;

Instance::Role Instance::claim() {
    if (claimLock() == Role::Second)
        return Role::Second;
    bus_ = SessionBus::open(loop_, whyNoBus_);
    if (bus_)
        return claimName();
    if (!lock_ || lock_->state() != InstanceLock::State::Held)
        doubt_ = "Without a session bus and a lock nothing keeps a second Kelpa from starting";
    return Role::First;
}

std::optional<unsigned> Instance::requestName(unsigned flags) {
    const BusMessage call = makeCall(*bus_, theBus, "RequestName");
    if (!call || sd_bus_message_append(call.get(), "su", control::service, flags) < 0)
        return std::nullopt;
    const BusMessage answer = ask(loop_, *bus_, call, patience);
    unsigned result = 0;
    if (!answer || sd_bus_message_is_method_error(answer.get(), nullptr) ||
        sd_bus_message_read(answer.get(), "u", &result) < 0)
        return std::nullopt;
    return result;
}

bool Instance::ownerShowsSettings() {
    const BusAddress owner = {control::service, control::path, control::interface};
    const BusMessage answer = ask(loop_, *bus_, makeCall(*bus_, owner, control::showSettings), patience);
    return answer && !sd_bus_message_is_method_error(answer.get(), nullptr);
}

Instance::Role Instance::claimName() {
    auto result = requestName(allowReplacement | doNotQueue);
    if (result == nameExists) {
        // A stale holder of the lock is the owner of the name as well.
        if (!lockWasStale_ && ownerShowsSettings())
            return Role::Second;
        result = requestName(allowReplacement | replaceExisting | doNotQueue);
    }
    if (result != isOwner && result != wasOwner)
        doubt_ = "The session bus does not give out the name " + std::string(control::service);
    return Role::First;
}

Instance::Role Instance::claimLock() {
    if (!lock_)
        return Role::First;
    lock_->take();
    // Twice, should a third start come in between.
    for (int tries = 0; tries < 2 && lock_->state() == InstanceLock::State::HeldByAnother; ++tries) {
        if (lock_->askHolder(loop_, patience))
            return Role::Second;
        if (lock_->state() == InstanceLock::State::HeldByAnother)
            lockWasStale_ = lock_->takeOver();
    }
    return Role::First;
}

void Instance::serve(InstanceClient& client) {
    client_ = &client;
    if (lock_)
        lock_->serve(loop_, client);
    if (!bus_)
        return;
    sd_bus_slot* slot = nullptr;
    sd_bus_match_signal_async(bus_->handle(), &slot, theBus.service, theBus.path, theBus.interface,
                              "NameLost", BusHandler<&Instance::nameLost>::call, nullptr, this);
    losing_.reset(slot);
}

void Instance::nameLost(sd_bus_message* message) {
    const char* name = nullptr;
    if (sd_bus_message_read(message, "s", &name) >= 0 && std::strcmp(name, control::service) == 0)
        client_->replaced();
}

} // namespace kelpa
