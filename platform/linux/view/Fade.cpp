#include "platform/linux/view/Fade.h"

#include <algorithm>

namespace kelpa::view {

namespace {

/// Some 30 steps a second: over two seconds each changes a colour by a few of its 256 levels at most.
constexpr int stepMilliseconds = 33;

double eased(double part) {
    return part * part * (3 - 2 * part);
}

} // namespace

Fade::Fade(std::function<void(double)> apply) : apply_(std::move(apply)) {
    timer_.setInterval(stepMilliseconds);
    timer_.setTimerType(Qt::PreciseTimer);
    timer_.callOnTimeout([this] { step(); });
}

void Fade::set(double value) {
    timer_.stop();
    value_ = target_ = std::clamp(value, 0.0, 1.0);
    apply_(value_);
}

void Fade::run(double target, double seconds) {
    if (!(seconds > 0)) {
        set(target);
        return;
    }
    start_ = value_;
    target_ = std::clamp(target, 0.0, 1.0);
    seconds_ = seconds;
    elapsed_.start();
    timer_.start();
}

void Fade::step() {
    const double part = std::min(1.0, static_cast<double>(elapsed_.elapsed()) / 1000.0 / seconds_);
    value_ = start_ + (target_ - start_) * eased(part);
    if (part >= 1)
        timer_.stop();
    apply_(value_);
}

} // namespace kelpa::view
