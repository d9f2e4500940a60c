#include "platform/linux/display/WaylandDisplay.h"

namespace kelpa {

std::unique_ptr<WaylandDisplay> WaylandDisplay::open(EventLoop& loop, std::function<void()> lost) {
    auto connection = WaylandConnection::open(loop, std::move(lost));
    if (!connection)
        return nullptr;
    return std::unique_ptr<WaylandDisplay>(new WaylandDisplay(loop, std::move(connection)));
}

WaylandDisplay::WaylandDisplay(EventLoop& loop, std::unique_ptr<WaylandConnection> connection)
    : connection_(std::move(connection)), screens_(loop, *connection_) {}

} // namespace kelpa
