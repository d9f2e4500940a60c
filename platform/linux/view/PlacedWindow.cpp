#include "platform/linux/view/PlacedWindow.h"

#include <QQuickItem>

namespace kelpa::view {

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
