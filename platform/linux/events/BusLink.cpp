#include "platform/linux/events/BusLink.h"

#include "platform/linux/Monotonic.h"

#include <algorithm>
#include <utility>

namespace kelpa {

namespace {

/// A bus that is started again is there after a moment; one that stays away is not asked for much.
constexpr double firstPause = 2;
constexpr double longestPause = 300;
/// A connection that lasted so long was a good one.
constexpr double proven = 60;

double now() {
    return static_cast<double>(monotonicMicroseconds()) / 1e6;
}

} // namespace

BusLink::BusLink(EventLoop& loop, Kind kind, std::function<void(SessionBus& bus)> opened,
                 std::function<void()> lost)
    : loop_(loop), kind_(kind), opened_(std::move(opened)), lost_(std::move(lost)), pause_(firstPause) {}

void BusLink::open() {
    std::string why;
    bus_ = kind_ == Kind::Session ? SessionBus::open(loop_, why) : SessionBus::openSystem(loop_, why);
    if (!bus_)
        return tryLater();
    openedAt_ = now();
    // The connection cannot be taken down inside of what it tells itself.
    loss_ = bus_->whenLost([this] { later_ = loop_.afterReal(0, [this] { lose(); }); });
    opened_(*bus_);
}

void BusLink::lose() {
    lost_();
    loss_.cancel();
    bus_.reset();
    if (now() - openedAt_ >= proven)
        pause_ = firstPause;
    tryLater();
}

void BusLink::tryLater() {
    later_ = loop_.afterReal(pause_, [this] { open(); });
    pause_ = std::min(pause_ * 2, longestPause);
}

} // namespace kelpa
