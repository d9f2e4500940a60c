#include "platform/linux/events/LogindActivity.h"

namespace kelpa {

namespace {

/// A service that has not answered by then is not there, or knows of no session of ours.
constexpr double patienceSeconds = 5;

} // namespace

LogindActivity::LogindActivity(EventLoop& loop, Bus& system, const OwnWindows& windows)
    : loop_(loop), system_(system), spell_(loop, windows) {}

ActivitySource::Start LogindActivity::start(ActivitySink& sink) {
    sink_ = &sink;
    patience_ = loop_.afterReal(patienceSeconds, [this] {
        session_.reset();
        sink_->absent();
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
        sink_->watching();
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
        sink_->failed("the session is not known there any more");
    });
}

} // namespace kelpa
