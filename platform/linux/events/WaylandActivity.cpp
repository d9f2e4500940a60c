#include "platform/linux/display/WaylandConnection.h"
#include "platform/linux/events/DesktopActivity.h"

#include <algorithm>
#include <ext-idle-notify.h>
#include <kde-idle.h>
#include <list>

namespace kelpa {

namespace {

/// From this version on a seat is given back by a request of its own.
constexpr std::uint32_t seatVersion = WL_SEAT_RELEASE_SINCE_VERSION;

/// One seat, and whether somebody uses it.
struct Seat {
    wl_seat* seat;
    std::uint32_t number;
    std::function<void()> changed;
    bool active = true;       ///< until the compositor says otherwise
    Subscription notice = {}; ///< of what `setIdle` is called for; belongs to whoever asked for it

    Seat(wl_seat* bound, std::uint32_t itsNumber, std::function<void()> tell)
        : seat(bound), number(itsNumber), changed(std::move(tell)) {}
    ~Seat() {
        notice.cancel();
        if (wl_seat_get_version(seat) >= WL_SEAT_RELEASE_SINCE_VERSION)
            wl_seat_release(seat);
        else
            wl_seat_destroy(seat);
    }
    Seat(const Seat&) = delete;
    Seat& operator=(const Seat&) = delete;

    void setIdle(bool idle) {
        active = !idle;
        changed();
    }
};

/// One of the protocols by which Wayland compositors tell that nobody has used a seat for a while.
struct IdleProtocol {
    const wl_interface& offer; ///< what a compositor offers when it speaks the protocol
    /// Calls `setIdle` of the seat each time when nobody has used it for so long, and at the next use after
    /// that, until the handle ends. `manager` is what was bound to the offer.
    Subscription (*watch)(void* manager, wl_seat* seat, std::uint32_t milliseconds, Seat& watched);
    void (*endManager)(void* manager);
};

/// `ext-idle-notify-v1`, which all compositors agreed on.
struct ExtIdle {
    using Manager = ext_idle_notifier_v1;
    using Notice = ext_idle_notification_v1;
    using Listener = ext_idle_notification_v1_listener;
    static constexpr const wl_interface& offer = ext_idle_notifier_v1_interface;
    static constexpr auto endManager = ext_idle_notifier_v1_destroy;
    static constexpr auto endNotice = ext_idle_notification_v1_destroy;
    static constexpr auto addListener = ext_idle_notification_v1_add_listener;
    static Notice* ask(Manager* manager, wl_seat* seat, std::uint32_t milliseconds) {
        return ext_idle_notifier_v1_get_idle_notification(manager, milliseconds, seat);
    }
};

/// What older compositors took over from KDE. One that holds a notice back until some seconds have passed
/// makes activity seem to last for as long.
struct KdeIdle {
    using Manager = org_kde_kwin_idle;
    using Notice = org_kde_kwin_idle_timeout;
    using Listener = org_kde_kwin_idle_timeout_listener;
    static constexpr const wl_interface& offer = org_kde_kwin_idle_interface;
    static constexpr auto endManager = org_kde_kwin_idle_destroy;
    static constexpr auto endNotice = org_kde_kwin_idle_timeout_release;
    static constexpr auto addListener = org_kde_kwin_idle_timeout_add_listener;
    static constexpr auto ask = org_kde_kwin_idle_get_idle_timeout;
};

template <typename Words>
IdleProtocol protocolOf() {
    using Manager = typename Words::Manager;
    using Notice = typename Words::Notice;
    static constexpr typename Words::Listener listener{
        [](void* seat, Notice*) { static_cast<Seat*>(seat)->setIdle(true); },
        [](void* seat, Notice*) { static_cast<Seat*>(seat)->setIdle(false); }};
    return {Words::offer,
            [](void* manager, wl_seat* seat, std::uint32_t milliseconds, Seat& watched) {
                Notice* notice = Words::ask(static_cast<Manager*>(manager), seat, milliseconds);
                Words::addListener(notice, &listener, &watched);
                return Subscription([notice] { Words::endNotice(notice); });
            },
            [](void* manager) { Words::endManager(static_cast<Manager*>(manager)); }};
}

/// All that the program speaks, the best first.
const IdleProtocol protocols[] = {protocolOf<ExtIdle>(), protocolOf<KdeIdle>()};

/// Whoever uses mouse, keyboard or anything else of a Wayland compositor's seats, by the compositor's idle
/// notifications. They do not tell one device from another, so that every key counts as well; and they hold
/// that somebody is there while a program keeps the screen awake, as players do.
class WaylandActivity final : public ActivitySource, private WaylandGlobals {
  public:
    WaylandActivity(EventLoop& loop, const OwnWindows& windows, double speed)
        : loop_(loop), restMilliseconds_(ActivitySpell::restMilliseconds(speed)), spell_(loop, windows) {}

    [[nodiscard]] std::string name() const override {
        return std::string("the compositor") +
               (protocol_ == nullptr ? "" : " (" + std::string(protocol_->offer.name) + ")");
    }

    Start start(ActivitySink& sink) override {
        sink_ = &sink;
        connection_ = WaylandConnection::open(loop_, [this] { lost(); });
        if (connection_ && !chooseProtocol())
            connection_.reset();
        if (!connection_)
            return Start::Absent;
        globals_ = connection_->listen(*this);
        connection_->flush();
        spell_.start(sink);
        return Start::Watching;
    }

  private:
    void came(const WaylandGlobal& global) override {
        if (global.interface != wl_seat_interface.name)
            return;
        auto* const wl = connection_->bind<wl_seat>(global, wl_seat_interface, seatVersion);
        Seat& seat = seats_.emplace_back(wl, global.number, [this] { seatChanged(); });
        seat.notice = protocol_->watch(manager_, wl, restMilliseconds_, seat);
    }

    void went(std::uint32_t number) override {
        if (seats_.remove_if([number](const Seat& seat) { return seat.number == number; }) > 0)
            seatChanged();
    }

    [[nodiscard]] bool chooseProtocol() {
        for (const IdleProtocol& protocol : protocols) {
            const WaylandGlobal* offer = connection_->offer(protocol.offer.name);
            if (offer == nullptr)
                continue;
            protocol_ = &protocol;
            manager_ = connection_->bind<void>(*offer, protocol.offer, 1);
            managerEnd_ = Subscription([this] { protocol_->endManager(manager_); });
            return true;
        }
        return false;
    }

    void seatChanged() {
        const bool used =
            std::any_of(seats_.begin(), seats_.end(), [](const Seat& seat) { return seat.active; });
        used ? spell_.active() : spell_.rest();
    }

    void lost() {
        spell_.stop();
        sink_->sourceFailed("the compositor is gone");
    }

    EventLoop& loop_;
    std::uint32_t restMilliseconds_; ///< real ones
    ActivitySpell spell_;
    ActivitySink* sink_ = nullptr;
    std::unique_ptr<WaylandConnection> connection_;
    const IdleProtocol* protocol_ = nullptr; ///< the best that the compositor speaks; null before the start
    void* manager_ = nullptr;                ///< the compositor's end of it
    Subscription managerEnd_;
    std::list<Seat> seats_;
    Subscription globals_;
};

} // namespace

std::unique_ptr<ActivitySource> makeWaylandActivity(EventLoop& loop, const OwnWindows& windows,
                                                    double speed) {
    return std::make_unique<WaylandActivity>(loop, windows, speed);
}

} // namespace kelpa
