#include "platform/linux/bus/NameOwner.h"

#include "platform/linux/bus/BusCall.h"

#include <utility>

namespace kelpa {

namespace {

std::string changesOf(const std::string& name) {
    return "type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',"
           "member='NameOwnerChanged',arg0='" +
           name + "'";
}

} // namespace

NameOwner::NameOwner(const Bus& bus, const std::string& name, std::function<void(bool owned)> changed)
    : changed_(std::move(changed)),
      changes_(bus.match(changesOf(name), BusHandler<&NameOwner::ownerChanged>::call, this)) {
    const BusMessage question = makeCall(bus, theBus, "NameHasOwner");
    if (question)
        sd_bus_message_append(question.get(), "s", name.c_str());
    question_ = bus.call(question, BusHandler<&NameOwner::looked>::call, this);
}

void NameOwner::ownerChanged(sd_bus_message* signal) {
    const char *name = nullptr, *before = nullptr, *after = nullptr;
    if (sd_bus_message_read(signal, "sss", &name, &before, &after) >= 0)
        tell(*after != '\0');
}

void NameOwner::looked(sd_bus_message* reply) {
    int owned = 0;
    // A bus that does not know is no reason to give up on the owner.
    if (!sd_bus_message_is_method_error(reply, nullptr) && sd_bus_message_read(reply, "b", &owned) >= 0 &&
        owned == 0)
        tell(false);
}

void NameOwner::tell(bool owned) {
    const auto changed = changed_; // which stays when the object goes
    changed(owned);
}

} // namespace kelpa
