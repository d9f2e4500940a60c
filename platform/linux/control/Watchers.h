#pragma once

#include "platform/linux/bus/Bus.h"

#include <functional>
#include <map>
#include <string>

namespace kelpa {

/// The clients on the bus that want to hear of changes: from when they say so until they take it back or
/// leave the bus, each once however often it asks.
class Watchers {
  public:
    /// `changed` is told when the first comes and when the last goes. The bus outlives the object.
    Watchers(const Bus& bus, std::function<void(bool any)> changed);
    Watchers(const Watchers&) = delete;
    Watchers& operator=(const Watchers&) = delete;

    /// `client` is the name that the bus itself gave it.
    void add(const std::string& client);
    void remove(const std::string& client);
    void removeAll();

  private:
    const Bus& bus_;
    std::function<void(bool)> changed_;
    std::map<std::string, NameOwner> watchers_;
};

} // namespace kelpa
