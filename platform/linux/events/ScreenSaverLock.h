#pragma once

#include "platform/linux/bus/Bus.h"
#include "platform/linux/events/LockEdges.h"

#include <array>
#include <cstddef>
#include <map>
#include <string>

namespace kelpa {

/// The screen savers of the session bus, as sources of lock and unlock: whoever emits `ActiveChanged` of one
/// of their interfaces is one, under whatever name and path.
class ScreenSaverLock final : private BusClient {
  public:
    /// Both outlive the source.
    ScreenSaverLock(Bus& bus, LockEdges& edges);
    void start() { joined_ = bus_.join(*this); }

  private:
    static constexpr std::size_t kinds = 5;

    void busOpened() override;
    void busLost() override;
    void ask(std::size_t kind);
    void changed(sd_bus_message* signal);
    void answered(sd_bus_message* reply);
    void says(const std::string& sender, bool locked);
    void gone(const std::string& sender);

    Bus& bus_;
    LockEdges& edges_;
    std::array<BusSlot, kinds> matches_;
    std::array<BusSlot, kinds> questions_;
    /// The bus names of those that say that the screen is locked, with what tells of their end.
    std::map<std::string, NameOwner> locked_;
    Subscription joined_;
};

} // namespace kelpa
