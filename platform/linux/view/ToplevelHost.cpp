#include "platform/linux/view/ToplevelHost.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScreen>

namespace kelpa::view {

ToplevelHost::ToplevelHost(QQuickWindow& window, QQuickItem& content, WindowRole role)
    : window_(window), content_(content), role_(role) {
    window_.setFlags(Qt::Window | Qt::FramelessWindowHint);
    connect(qApp, &QGuiApplication::screenAdded, this, &ToplevelHost::screensChanged, Qt::QueuedConnection);
    connect(qApp, &QGuiApplication::screenRemoved, this, &ToplevelHost::screensChanged, Qt::QueuedConnection);
}

/// A panel shows on any screen rather than not at all.
QScreen* ToplevelHost::targetScreen() const {
    for (QScreen* screen : QGuiApplication::screens())
        if (screen->name() == connector_)
            return screen;
    return role_ == WindowRole::Panel ? QGuiApplication::primaryScreen() : nullptr;
}

void ToplevelHost::setPlace(const QRect& place, const QString& connector) {
    const bool moved = connector != connector_;
    place_ = place;
    connector_ = connector;
    if (moved)
        screensChanged();
}

void ToplevelHost::screensChanged() {
    QScreen* screen = wanted_ ? targetScreen() : nullptr;
    if (screen == nullptr || (window_.isVisible() && window_.screen() != screen))
        window_.hide();
    if (screen == nullptr || window_.isVisible())
        return;
    prepare();
    if (role_ == WindowRole::Cover)
        window_.showFullScreen();
    else
        window_.show();
}

void ToplevelHost::prepare() {
    if (QScreen* screen = targetScreen())
        window_.setScreen(screen);
    // A window of one possible size floats also where the others are tiled.
    if (role_ == WindowRole::Panel) {
        window_.setMinimumSize(place_.size());
        window_.setMaximumSize(place_.size());
    }
    window_.resize(place_.size());
    window_.create();
    followBackground();
}

void ToplevelHost::show() {
    wanted_ = true;
    screensChanged();
}

void ToplevelHost::hide() {
    wanted_ = false;
    window_.hide();
}

void ToplevelHost::followBackground() {
    window_.setColor(content_.property("color").value<QColor>());
}

/// Behind a full-screen window the compositor shows nothing, and a window's opacity cannot be changed: the
/// content comes out of the background.
void ToplevelHost::setOpacity(double value) {
    content_.setProperty("reveal", value);
}

void ToplevelHost::beginDrag(const QMouseEvent&) {
    window_.startSystemMove();
}

} // namespace kelpa::view
