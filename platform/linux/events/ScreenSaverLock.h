#pragma once

#include "platform/linux/events/BusLink.h"
#include "platform/linux/events/LockEdges.h"

#include <array>
#include <cstddef>
#include <map>
#include <string>

namespace kelpa {

/// The screen savers of the session bus, as sources of lock and unlock: whoever emits `ActiveChanged` of one
/// of their interfaces is one, under whatever name and path.
class ScreenSaverLock {
  public:
    /// Both outlive the source.
    ScreenSaverLock(EventLoop& loop, LockEdges& edges);
    void start() { link_.start(); }

  private:
    static constexpr std::size_t kinds = 5;

    void opened(SessionBus& bus);
    void lost();
    void ask(std::size_t kind);
    void changed(sd_bus_message* signal);
    void answered(sd_bus_message* reply);
    void ownerChanged(sd_bus_message* signal);
    void says(const std::string& sender, bool locked);
    [[nodiscard]] BusSlot match(const std::string& rule, sd_bus_message_handler_t handler);

    LockEdges& edges_;
    BusLink link_;
    sd_bus* bus_ = nullptr; ///< null while there is none
    std::array<BusSlot, kinds> matches_;
    std::array<BusSlot, kinds> questions_;
    /// The bus names of those that say that the screen is locked, with what tells of their end.
    std::map<std::string, BusSlot> locked_;
};

} // namespace kelpa
