#include "platform/linux/events/WaylandActivity.h"

#include <algorithm>
#include <cstdlib>
#include <utility>

namespace kelpa {

namespace {

/// From here on a seat is given back in so many words.
constexpr std::uint32_t seatVersion = WL_SEAT_RELEASE_SINCE_VERSION;

} // namespace

/// One seat, and whether somebody uses it.
class WaylandActivity::Seat {
  public:
    Seat(WaylandActivity& home, wl_seat* seat, std::uint32_t number)
        : seat_(seat), number_(number),
          notice_(home.protocol_->watch(*seat, home.restMilliseconds_, [this, &home](bool idle) {
              active_ = !idle;
              home.seatChanged();
          })) {}
    ~Seat() {
        notice_.reset();
        if (wl_seat_get_version(seat_) >= WL_SEAT_RELEASE_SINCE_VERSION)
            wl_seat_release(seat_);
        else
            wl_seat_destroy(seat_);
    }
    Seat(const Seat&) = delete;
    Seat& operator=(const Seat&) = delete;

    [[nodiscard]] std::uint32_t number() const { return number_; }
    [[nodiscard]] bool active() const { return active_; }

  private:
    wl_seat* seat_;
    std::uint32_t number_;
    bool active_ = true; ///< until the compositor says otherwise
    std::unique_ptr<IdleNotice> notice_;
};

WaylandActivity::WaylandActivity(EventLoop& loop, const OwnWindows& windows, double speed)
    : loop_(loop), restMilliseconds_(ActivitySpell::restMilliseconds(speed)), spell_(loop, windows) {}

WaylandActivity::~WaylandActivity() = default;

std::string WaylandActivity::name() const {
    return "the compositor" + (protocol_ ? " (" + protocol_->name() + ")" : "");
}

ActivitySource::Start WaylandActivity::start(ActivitySink& sink) {
    sink_ = &sink;
    connection_ = WaylandConnection::open(loop_, [this] { lost(); });
    if (!connection_)
        return Start::Absent;
    globals_ = connection_->listen(*this);
    if (!chooseProtocol()) {
        globals_.cancel();
        connection_.reset();
        return Start::Absent;
    }
    for (const WaylandGlobal& offer : std::exchange(offers_, {}))
        watch(offer);
    connection_->flush();
    spell_.start(sink);
    return Start::Watching;
}

bool WaylandActivity::chooseProtocol() {
    for (auto& protocol : idleProtocols()) {
        const auto offer = std::find_if(offers_.begin(), offers_.end(), [&protocol](const auto& each) {
            return each.interface == protocol->name();
        });
        if (offer == offers_.end())
            continue;
        protocol->bind(*connection_, *offer);
        protocol_ = std::move(protocol);
        return true;
    }
    return false;
}

void WaylandActivity::came(const WaylandGlobal& global) {
    if (protocol_)
        watch(global);
    else
        offers_.push_back(global);
}

void WaylandActivity::watch(const WaylandGlobal& global) {
    if (global.interface != wl_seat_interface.name)
        return;
    auto* seat = connection_->bind<wl_seat>(global, wl_seat_interface, seatVersion);
    seats_.emplace_back(*this, seat, global.number);
}

void WaylandActivity::went(std::uint32_t number) {
    if (seats_.remove_if([number](const Seat& seat) { return seat.number() == number; }) > 0)
        seatChanged();
}

void WaylandActivity::seatChanged() {
    const bool used =
        std::any_of(seats_.begin(), seats_.end(), [](const Seat& seat) { return seat.active(); });
    used ? spell_.active() : spell_.rest();
}

void WaylandActivity::lost() {
    spell_.stop();
    sink_->failed("the compositor is gone");
}

} // namespace kelpa
