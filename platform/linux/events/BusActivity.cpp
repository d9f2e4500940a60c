#include "platform/linux/bus/Bus.h"
#include "platform/linux/events/DesktopActivity.h"
#include "platform/linux/events/LogindSession.h"

#include <optional>

namespace kelpa {

namespace {

constexpr BusAddress monitor = {"org.gnome.Mutter.IdleMonitor", "/org/gnome/Mutter/IdleMonitor/Core",
                                "org.gnome.Mutter.IdleMonitor"};

/// A logind that has not answered by then is not there, or knows of no session of ours.
constexpr double patienceSeconds = 5;

/// Whoever uses the desk under GNOME, whose compositor tells of it on the session bus. Every key counts, as
/// with the other notifications of this kind.
class MutterActivity final : public ActivitySource, private BusClient {
  public:
    MutterActivity(EventLoop& loop, Bus& bus, const OwnWindows& windows, double speed)
        : loop_(loop), bus_(bus), restMilliseconds_(ActivitySpell::restMilliseconds(speed)),
          spell_(loop, windows) {}

    [[nodiscard]] std::string name() const override { return "GNOME (org.gnome.Mutter.IdleMonitor)"; }
    Start start(ActivitySink& sink) override {
        sink_ = &sink;
        if (!bus_.open())
            return Start::Absent;
        joined_ = bus_.join(*this);
        return Start::Asking;
    }

  private:
    void busOpened() override {
        signals_ = bus_.match<&MutterActivity::fired>(signalRule(monitor, "WatchFired"), *this);
        question_ = bus_.call<&MutterActivity::idleWatched>(
            bus_.newCall(monitor, "AddIdleWatch", "t", static_cast<std::uint64_t>(restMilliseconds_)), *this);
    }

    void busLost() override { fail("the session bus is gone"); }
    void idleWatched(sd_bus_message* reply) {
        if (!readFrom(reply, "u", &idleWatch_))
            return leave([this] { sink_->sourceAbsent(); });
        owner_.emplace(bus_, monitor.service, [this](bool) { fail("the compositor is gone"); });
        spell_.start(*sink_);
        sink_->sourceWatches();
    }

    void useWatched(sd_bus_message* reply) {
        if (!readFrom(reply, "u", &useWatch_))
            fail("the next use of the desk cannot be watched for");
    }

    void fired(sd_bus_message* signal) {
        std::uint32_t watch = 0;
        if (!readFrom(signal, "u", &watch))
            return;
        if (watch == idleWatch_) {
            spell_.rest();
            if (useWatch_ == 0)
                question_ = bus_.call<&MutterActivity::useWatched>(
                    bus_.newCall(monitor, "AddUserActiveWatch"), *this);
        } else if (watch == useWatch_) {
            useWatch_ = 0;
            spell_.active();
        }
    }

    void fail(const std::string& why) {
        if (ending_.active())
            return;
        spell_.stop();
        leave([this, why] { sink_->sourceFailed(why); });
    }

    /// No slot can be dropped for good inside of what it tells.
    void leave(std::function<void()> tell) {
        ending_ = loop_.afterReal(0, [this, tell = std::move(tell)] {
            joined_.cancel();
            owner_.reset();
            signals_.reset();
            question_.reset();
            tell();
        });
    }

    EventLoop& loop_;
    Bus& bus_;
    std::uint32_t restMilliseconds_;
    ActivitySpell spell_;
    ActivitySink* sink_ = nullptr;
    Subscription joined_;
    Subscription ending_;
    std::optional<NameOwner> owner_;
    BusSlot signals_;
    BusSlot question_;            ///< the one that is open; asking another drops its answer
    std::uint32_t idleWatch_ = 0; ///< fires each time; 0 before there is one
    std::uint32_t useWatch_ = 0;  ///< fires once; 0 while there is none
};

/// Whoever uses the user's session, as the desktop tells logind: the last resort. Desktops say that nobody is
/// there only after some minutes, and some never do; until then somebody is taken to be there.
class LogindActivity final : public ActivitySource, private LogindSessionClient {
  public:
    LogindActivity(EventLoop& loop, Bus& system, const OwnWindows& windows)
        : loop_(loop), system_(system), spell_(loop, windows) {}

    [[nodiscard]] std::string name() const override { return "logind (IdleHint)"; }
    Start start(ActivitySink& sink) override {
        sink_ = &sink;
        patience_ = loop_.afterReal(patienceSeconds, [this] {
            session_.reset();
            sink_->sourceAbsent();
        });
        session_ = followLogindSession(loop_, system_, "IdleHint", *this);
        return Start::Asking;
    }

  private:
    void propertyRead(bool idle) override {
        patience_.cancel();
        if (!watching_) {
            watching_ = true;
            spell_.start(*sink_);
            sink_->sourceWatches();
        }
        idle ? spell_.rest() : spell_.active();
    }

    void propertyLost() override {
        if (!watching_)
            return;
        spell_.stop();
        // The session cannot be dropped inside of what it tells.
        ending_ = loop_.afterReal(0, [this] {
            session_.reset();
            sink_->sourceFailed("the session is not known there any more");
        });
    }

    EventLoop& loop_;
    Bus& system_;
    ActivitySpell spell_;
    ActivitySink* sink_ = nullptr;
    bool watching_ = false;
    std::unique_ptr<BusClient> session_;
    Subscription patience_; ///< ends with the first answer
    Subscription ending_;
};

} // namespace

std::unique_ptr<ActivitySource> makeMutterActivity(EventLoop& loop, Bus& session, const OwnWindows& windows,
                                                   double speed) {
    return std::make_unique<MutterActivity>(loop, session, windows, speed);
}

std::unique_ptr<ActivitySource> makeLogindActivity(EventLoop& loop, Bus& system, const OwnWindows& windows) {
    return std::make_unique<LogindActivity>(loop, system, windows);
}

} // namespace kelpa
