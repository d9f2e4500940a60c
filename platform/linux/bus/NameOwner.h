#pragma once

#include "platform/linux/bus/Bus.h"

#include <functional>
#include <string>

namespace kelpa {

/// Whether anybody has a name on the bus. Whoever had it may have left before we could hear of that, so it is
/// looked for once after we began to listen.
class NameOwner {
  public:
    /// `changed` runs from the main loop: when the name turns out to have no owner at the beginning, and on
    /// every change. It may end the object. The bus is open and outlives it.
    NameOwner(const Bus& bus, const std::string& name, std::function<void(bool owned)> changed);
    NameOwner(const NameOwner&) = delete;
    NameOwner& operator=(const NameOwner&) = delete;

  private:
    void ownerChanged(sd_bus_message* signal);
    void looked(sd_bus_message* reply);
    void tell(bool owned);

    std::function<void(bool)> changed_;
    BusSlot changes_;
    BusSlot question_;
};

} // namespace kelpa
