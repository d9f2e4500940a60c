#include "platform/linux/control/Watchers.h"

namespace kelpa {

Watchers::Watchers(const Bus& bus, std::function<void(bool any)> changed)
    : bus_(bus), changed_(std::move(changed)) {}

void Watchers::add(const std::string& client) {
    const auto leaves = [this, client](bool there) {
        if (!there)
            remove(client);
    };
    if (watchers_.try_emplace(client, bus_, client, leaves).second && watchers_.size() == 1)
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
