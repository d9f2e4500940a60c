#include "platform/linux/view/PlacedWindow.h"

#include <QQuickItem>
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

PlacedWindow::PlacedWindow(Stage& stage, QQmlEngine& engine, const QString& file, WindowRole role)
    : ViewWindow(engine, file), host_(stage.makeHost(*this, content(), role)),
      fade_([this](double value) { host_->setOpacity(value); }) {}

PlacedWindow::~PlacedWindow() = default;

void PlacedWindow::setPlace(const QRect& place, const QString& connector) {
    host_->setPlace(place, connector);
}

void PlacedWindow::setAlpha(double alpha) {
    host_->beginFade();
    fade_.set(alpha);
    settle();
}

void PlacedWindow::fadeTo(double alpha, double seconds) {
    host_->beginFade();
    fade_.run(alpha, seconds);
    settle();
}

/// What is fading out takes no more input.
void PlacedWindow::settle() {
    const bool leaving = fade_.target() <= 0;
    content().setEnabled(!leaving);
    host_->setLeaving(leaving);
}

void PlacedWindow::warmUp() {
    if (warm_ || isVisible())
        return;
    warm_ = true;
    host_->prepare();
    grabWindow();
}

void PlacedWindow::appear() {
    host_->show();
    appeared();
}

void PlacedWindow::disappear() {
    host_->hide();
}

void PlacedWindow::followBackground() {
    host_->followBackground();
}

} // namespace kelpa::view
