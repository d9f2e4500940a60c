#include "platform/linux/control/Watchers.h"

#include "platform/linux/control/BusCall.h"

namespace kelpa {

/// One client, whose end the bus tells. It may have left before we asked to be told, so it is looked for once
/// after that.
struct Watchers::Watcher {
    Watcher(Watchers& all, std::string client) : owner(all), name(std::move(client)) {
        const std::string rule =
            "type='signal',sender='org.freedesktop.DBus',interface='org.freedesktop.DBus',"
            "member='NameOwnerChanged',arg0='" +
            name + "'";
        sd_bus_slot* slot = nullptr;
        sd_bus_add_match_async(owner.bus_.handle(), &slot, rule.c_str(), BusHandler<&Watcher::left>::call,
                               nullptr, this);
        leaving.reset(slot);
        slot = nullptr;
        sd_bus_call_method_async(owner.bus_.handle(), &slot, theBus.service, theBus.path, theBus.interface,
                                 "NameHasOwner", BusHandler<&Watcher::looked>::call, this, "s", name.c_str());
        question.reset(slot);
    }

    // Both may remove the watcher itself, so nothing follows that.
    void left(sd_bus_message*) { owner.remove(std::string(name)); }
    void looked(sd_bus_message* reply) {
        int there = 0;
        if (sd_bus_message_is_method_error(reply, nullptr) || sd_bus_message_read(reply, "b", &there) < 0 ||
            there == 0)
            owner.remove(std::string(name));
    }

    Watchers& owner;
    std::string name;
    BusSlot leaving;
    BusSlot question;
};

Watchers::Watchers(SessionBus& bus, std::function<void(bool any)> changed)
    : bus_(bus), changed_(std::move(changed)), lost_(bus.whenLost([this] { removeAll(); })) {}

Watchers::~Watchers() = default;

void Watchers::add(const std::string& client) {
    if (!watchers_.try_emplace(client).second)
        return;
    watchers_[client] = std::make_unique<Watcher>(*this, client);
    if (watchers_.size() == 1)
        changed_(true);
}

void Watchers::remove(const std::string& client) {
    if (watchers_.erase(client) > 0 && watchers_.empty())
        changed_(false);
}

void Watchers::removeAll() {
    if (watchers_.empty())
        return;
    watchers_.clear();
    changed_(false);
}

} // namespace kelpa
