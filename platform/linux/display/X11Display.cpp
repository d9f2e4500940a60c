#include "platform/linux/display/X11Display.h"

namespace kelpa {

std::unique_ptr<X11Display> X11Display::open(EventLoop& loop, std::function<void()> lost) {
    auto connection = X11Connection::open(loop, std::move(lost));
    if (!connection)
        return nullptr;
    return std::unique_ptr<X11Display>(new X11Display(loop, std::move(connection)));
}

X11Display::X11Display(EventLoop& loop, std::unique_ptr<X11Connection> connection)
    : connection_(std::move(connection)), screens_(loop, *connection_), focus_(*connection_) {}

} // namespace kelpa
