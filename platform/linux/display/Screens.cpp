#include "platform/linux/display/Screens.h"

#include <algorithm>
#include <cmath>

namespace kelpa {

namespace {

/// Neither a monitor's connector is called so, nor what a toolkit makes up itself.
Monitor pretended() {
    return {"(no monitor)", {0, 0, 1920, 1080}, true};
}

int rounded(double points) {
    return static_cast<int>(std::lround(points));
}

bool contains(const PixelRect& rect, int x, int y) {
    return x >= rect.x && x < rect.x + rect.width && y >= rect.y && y < rect.y + rect.height;
}

} // namespace

/// Leaves the usable monitors in the order in which they are shown: the primary one, then as the server
/// lists them.
void Screens::tidy(std::vector<Monitor>& monitors) const {
    std::stable_partition(monitors.begin(), monitors.end(), [](const Monitor& one) { return one.primary; });
    std::vector<Monitor> usable;
    for (auto& monitor : monitors) {
        const bool covered = mirrors_ == Mirrors::ShareOneWindow &&
                             std::any_of(usable.begin(), usable.end(), [&monitor](const Monitor& other) {
                                 return other.pixels == monitor.pixels;
                             });
        if (!covered && monitor.pixels.width > 0 && monitor.pixels.height > 0)
            usable.push_back(std::move(monitor));
    }
    monitors = std::move(usable);
}

bool Screens::update(std::vector<Monitor> monitors) {
    tidy(monitors);
    if (monitors.empty())
        monitors.push_back(pretended());
    if (monitors == monitors_)
        return false;
    monitors_ = std::move(monitors);
    screens_.clear();
    for (const Monitor& monitor : monitors_)
        screens_.push_back({numberOf(monitor.connector), frame(monitor.pixels)});
    if (changed_)
        changed_();
    return true;
}

std::uint32_t Screens::numberOf(const std::string& connector) {
    const auto next = static_cast<std::uint32_t>(numbers_.size() + 1);
    return numbers_.try_emplace(connector, next).first->second;
}

std::string Screens::connector(std::uint32_t number) const {
    for (std::size_t i = 0; i < screens_.size(); ++i)
        if (screens_[i].number == number)
            return monitors_[i].connector;
    return {};
}

Rect Screens::frame(const PixelRect& pixels) const {
    const PixelRect first = monitors_.empty() ? PixelRect{} : monitors_.front().pixels;
    const double height = pixels.height;
    return {static_cast<double>(pixels.x) - first.x,
            static_cast<double>(first.y) + first.height - pixels.y - height,
            static_cast<double>(pixels.width), height};
}

PixelRect Screens::pixels(const Rect& frame) const {
    const PixelRect first = monitors_.empty() ? PixelRect{} : monitors_.front().pixels;
    return {first.x + rounded(frame.x), first.y + first.height - rounded(frame.y) - rounded(frame.height),
            rounded(frame.width), rounded(frame.height)};
}

const Screen* Screens::at(int x, int y) const {
    for (std::size_t i = 0; i < monitors_.size(); ++i)
        if (contains(monitors_[i].pixels, x, y))
            return &screens_[i];
    return nullptr;
}

} // namespace kelpa
