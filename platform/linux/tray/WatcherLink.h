#pragma once

#include "platform/linux/bus/Bus.h"

#include <functional>
#include <optional>
#include <string>

namespace kelpa {

/// Keeps an item registered with the desktop's watcher of status items, also with one that starts later or
/// starts again, and knows whether anything shows items at all.
class WatcherLink {
  public:
    /// `hostChanged` runs from the main loop on every change, and once the first answer is there. The bus
    /// outlives the object.
    WatcherLink(Bus& bus, std::function<void(bool present)> hostChanged);

    /// Registers the item that `service` is the bus name of, from now on. The bus is open.
    void start(const std::string& service);
    /// Forgets the item; a watcher learns of its end by the end of its bus name.
    void stop();
    /// Forgets the bus, on which nothing shows the item any more.
    void lose();

  private:
    void registerItem();
    void askForHost(sd_bus_message* reason);
    void setPresent(bool present);

    void ownerChanged(bool there);
    void registered(sd_bus_message* reply);
    void hostAnswered(sd_bus_message* reply);

    Bus& bus_;
    std::function<void(bool)> hostChanged_;
    std::string service_;
    std::optional<bool> present_; ///< empty until the first answer
    std::optional<NameOwner> owner_;
    BusSlot hostCame_, hostWent_;
    BusSlot call_; ///< the question that is open; asking another drops its answer
};

} // namespace kelpa
