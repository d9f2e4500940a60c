#include "platform/linux/events/BusActivity.h"

namespace kelpa {

namespace {

constexpr BusAddress monitor = {"org.gnome.Mutter.IdleMonitor", "/org/gnome/Mutter/IdleMonitor/Core",
                                "org.gnome.Mutter.IdleMonitor"};

/// A logind that has not answered by then is not there, or knows of no session of ours.
constexpr double patienceSeconds = 5;

} // namespace

MutterActivity::MutterActivity(EventLoop& loop, Bus& bus, const OwnWindows& windows, double speed)
    : loop_(loop), bus_(bus), restMilliseconds_(ActivitySpell::restMilliseconds(speed)),
      spell_(loop, windows) {}

ActivitySource::Start MutterActivity::start(ActivitySink& sink) {
    sink_ = &sink;
    if (!bus_.open())
        return Start::Absent;
    joined_ = bus_.join(*this);
    return Start::Asking;
}

void MutterActivity::busOpened() {
    signals_ = bus_.match<&MutterActivity::fired>(signalRule(monitor, "WatchFired"), *this);
    question_ = bus_.call<&MutterActivity::idleWatched>(
        bus_.newCall(monitor, "AddIdleWatch", "t", static_cast<std::uint64_t>(restMilliseconds_)), *this);
}

void MutterActivity::idleWatched(sd_bus_message* reply) {
    if (!readFrom(reply, "u", &idleWatch_)) {
        // No slot can be dropped for good inside of what it tells.
        ending_ = loop_.afterReal(0, [this] {
            leave();
            sink_->sourceAbsent();
        });
        return;
    }
    owner_.emplace(bus_, monitor.service, [this](bool) { fail("the compositor is gone"); });
    spell_.start(*sink_);
    sink_->sourceWatches();
}

void MutterActivity::useWatched(sd_bus_message* reply) {
    if (!readFrom(reply, "u", &useWatch_))
        fail("the next use of the desk cannot be watched for");
}

void MutterActivity::fired(sd_bus_message* signal) {
    std::uint32_t watch = 0;
    if (!readFrom(signal, "u", &watch))
        return;
    if (watch == idleWatch_) {
        spell_.rest();
        if (useWatch_ == 0)
            question_ =
                bus_.call<&MutterActivity::useWatched>(bus_.newCall(monitor, "AddUserActiveWatch"), *this);
    } else if (watch == useWatch_) {
        useWatch_ = 0;
        spell_.active();
    }
}

void MutterActivity::fail(const std::string& why) {
    if (ending_.active())
        return;
    spell_.stop();
    ending_ = loop_.afterReal(0, [this, why] {
        leave();
        sink_->sourceFailed(why);
    });
}

void MutterActivity::leave() {
    joined_.cancel();
    owner_.reset();
    signals_.reset();
    question_.reset();
}

LogindActivity::LogindActivity(EventLoop& loop, Bus& system, const OwnWindows& windows)
    : loop_(loop), system_(system), spell_(loop, windows) {}

ActivitySource::Start LogindActivity::start(ActivitySink& sink) {
    sink_ = &sink;
    patience_ = loop_.afterReal(patienceSeconds, [this] {
        session_.reset();
        sink_->sourceAbsent();
    });
    LogindSessionClient& client = *this;
    session_.emplace(loop_, system_, "IdleHint", client);
    session_->start();
    return Start::Asking;
}

void LogindActivity::propertyRead(bool idle) {
    patience_.cancel();
    if (!watching_) {
        watching_ = true;
        spell_.start(*sink_);
        sink_->sourceWatches();
    }
    idle ? spell_.rest() : spell_.active();
}

void LogindActivity::propertyLost() {
    if (!watching_)
        return;
    spell_.stop();
    // The session cannot be dropped inside of what it tells.
    ending_ = loop_.afterReal(0, [this] {
        session_.reset();
        sink_->sourceFailed("the session is not known there any more");
    });
}

} // namespace kelpa
