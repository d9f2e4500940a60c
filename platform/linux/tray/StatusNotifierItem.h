#pragma once

#include "platform/linux/bus/Bus.h"
#include "platform/linux/tray/ItemActivation.h"
#include "platform/linux/tray/LinuxStatusBar.h"

#include <functional>
#include <memory>
#include <string>

namespace kelpa {

/// What the item says of itself; the same in every state.
struct ItemIdentity {
    std::string id;   ///< names the program to hosts that remember the user's wishes
    std::string name; ///< shown to people and read out by screen readers
    std::string data; ///< the program's data folder
};

/// Real seconds in which Plasma's panel has changed its colours after it was said that they change. It draws
/// an icon in those that it had when it was last told of the icon, on a dark panel maybe dark ones.
inline constexpr double secondsOfRecolouring = 1;

/// The status item as `org.kde.StatusNotifierItem`, with the text as its label. A changed text costs one
/// small signal; hosts without labels find it in the tooltip, which is announced every ten seconds at most
/// while the text runs, because hosts read the whole item again for it.
///
/// Loop, bus and activation outlive the item. `hostChanged` runs from the main loop when something begins to
/// show the item and when nothing does any more.
[[nodiscard]] std::unique_ptr<StatusItemSink>
makeStatusNotifierItem(EventLoop& loop, Bus& bus, ItemIdentity identity, ItemActivation& activation,
                       std::function<void(bool present)> hostChanged);

/// Keeps the item of this connection registered with the desktop's watcher of status items, also with one
/// that starts later or starts again, and tells from the main loop, each time that it is found out, whether
/// anything shows items at all. Until what is given is destroyed; the bus is open, and outlives it. A watcher
/// learns of an item's end by the end of its bus name.
[[nodiscard]] std::shared_ptr<void> registerItem(const Bus& bus, std::function<void(bool present)> hostSeen);

} // namespace kelpa
