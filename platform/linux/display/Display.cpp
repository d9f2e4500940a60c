#include "platform/linux/display/Display.h"

#include <cstdlib>

namespace kelpa {

namespace {

constexpr const char* choice = "KELPA_DISPLAY";

std::string variable(const char* name) {
    const char* value = std::getenv(name);
    return value == nullptr ? "" : value;
}

/// What was tried with a server whose name stands in a variable of the environment.
std::string complaint(const char* name) {
    const std::string value = variable(name);
    return value.empty() ? "" : std::string(name) + " '" + value + "' cannot be opened";
}

std::string whyNone() {
    const std::string wayland = complaint("WAYLAND_DISPLAY");
    const std::string x11 = complaint("DISPLAY");
    if (wayland.empty() && x11.empty())
        return "set DISPLAY or WAYLAND_DISPLAY";
    return wayland.empty() || x11.empty() ? wayland + x11 : wayland + ", " + x11;
}

OpenedDisplay opened(std::unique_ptr<Display> display, const char* name) {
    if (!display)
        return {nullptr, whyNone()};
    setenv(choice, name, 1);
    return {std::move(display), ""};
}

} // namespace

bool inWaylandSession(EventLoop& loop) {
    // Without the variable the library would try a compositor by its usual name, which can be another
    // session's.
    return !variable("WAYLAND_DISPLAY").empty() && WaylandConnection::reachable(loop);
}

OpenedDisplay openDisplay(EventLoop& loop, const std::function<void()>& lost) {
    const std::string wanted = variable(choice);
    if (!wanted.empty() && wanted != "wayland" && wanted != "x11")
        return {nullptr, std::string(choice) + " is '" + wanted + "' and can be wayland or x11"};
    if (wanted != "x11" && inWaylandSession(loop))
        if (auto display = openWaylandDisplay(loop, lost))
            return opened(std::move(display), "wayland");
    if (wanted == "wayland")
        return {nullptr, whyNone()};
    return opened(openX11Display(loop, lost), "x11");
}

} // namespace kelpa
