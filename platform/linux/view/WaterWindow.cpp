#include "platform/linux/view/WaterWindow.h"

#include "platform/linux/view/X11.h"
#include "ui/Window.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QQuickItem>
#include <QScreen>
#include <utility>

namespace kelpa::view {

namespace {

/// Keys that are pressed so soon were meant for what had the keyboard before.
constexpr auto deafMilliseconds = static_cast<qint64>(1000 * deafSeconds(WindowStyle::Panel));

} // namespace

WaterWindow::WaterWindow(Stage& stage, QQmlEngine& engine)
    : PlacedWindow(stage, engine, QStringLiteral("WaterPanel.qml"), WindowRole::Panel) {}

/// An X server counts in pixels however large the desktop draws, so that the panel's size does not say yet
/// how many it has there. It keeps its corner. A Wayland compositor counts in the units that Qt draws in.
void WaterWindow::setPlace(const QRect& place, const QString& connector) {
    size_ = place.size();
    const QScreen* screen = screenOf(connector);
    const double factor = x11::connection() != nullptr && screen != nullptr ? screen->devicePixelRatio() : 1;
    QRect drawn(QPoint(), (QSizeF(place.size()) * factor).toSize());
    drawn.moveTopRight(place.topRight());
    PlacedWindow::setPlace(drawn, connector);
}

/// Shown again while it has the keyboard, it is not given that a second time.
void WaterWindow::appeared() {
    if (isActive())
        focused_.start();
    else
        focused_.invalidate();
    // No button is the one that Enter would press; Escape goes to the panel itself.
    content().forceActiveFocus();
}

void WaterWindow::takeKeyboard() {
    host().takeKeyboardInQuiet();
}

void WaterWindow::focusInEvent(QFocusEvent* event) {
    focused_.start();
    PlacedWindow::focusInEvent(event);
}

bool WaterWindow::deaf() const {
    return !staying() || !focused_.isValid() || focused_.elapsed() < deafMilliseconds;
}

void WaterWindow::keyPressEvent(QKeyEvent* event) {
    if (!deaf())
        PlacedWindow::keyPressEvent(event);
}

void WaterWindow::keyReleaseEvent(QKeyEvent* event) {
    if (!deaf())
        PlacedWindow::keyReleaseEvent(event);
}

/// Whoever clicks the panel wants it; and a press that no control takes begins to drag it.
void WaterWindow::mousePressEvent(QMouseEvent* event) {
    if (!isActive())
        host().takeKeyboard();
    PlacedWindow::mousePressEvent(event);
    if (event->button() != Qt::LeftButton || mouseGrabberItem() != nullptr)
        return;
    heldAt_ = host().place();
    host().beginDrag(*event);
}

void WaterWindow::mouseMoveEvent(QMouseEvent* event) {
    PlacedWindow::mouseMoveEvent(event);
    if (heldAt_ && (event->buttons() & Qt::LeftButton) != 0)
        host().drag(*event);
}

void WaterWindow::mouseReleaseEvent(QMouseEvent* event) {
    if (const auto from = std::exchange(heldAt_, std::nullopt))
        drop(*from);
    PlacedWindow::mouseReleaseEvent(event);
}

void WaterWindow::drop(const QRect& from) {
    host().endDrag();
    if (host().place() == from)
        return;
    QRect place(QPoint(), size_);
    place.moveTopRight(host().place().topRight());
    emit dragged(place.topLeft());
}

} // namespace kelpa::view
