#include "platform/linux/view/WaterWindow.h"

#include "platform/linux/view/X11.h"
#include "platform/ports/WindowSystem.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QQuickItem>

namespace kelpa {

namespace {

/// Keys that are pressed so soon were meant for what had the keyboard before.
constexpr auto deafMilliseconds = static_cast<qint64>(1000 * deafSeconds(WindowStyle::Panel));

} // namespace

WaterWindow::WaterWindow(QQmlEngine& engine) : PlacedWindow(engine, QStringLiteral("WaterPanel.qml")) {}

void WaterWindow::appeared() {
    focused_.invalidate();
    content().setProperty("answered", false);
    // No button is the one that Enter would press; Escape goes to the panel itself.
    content().forceActiveFocus();
}

void WaterWindow::left() {
    keysAtRest_.cancel();
}

void WaterWindow::takeKeyboard() {
    keysAtRest_.whenReached([this] { focusNow(); });
}

void WaterWindow::focusNow() {
    if (!staying() || x11::connection() == nullptr)
        return;
    x11::focus(static_cast<xcb_window_t>(winId()));
    focused_.start();
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
    keysAtRest_.cancel();
    if (!focused_.isValid())
        focusNow();
    PlacedWindow::mousePressEvent(event);
    dragged_ = event->button() == Qt::LeftButton && (mouseGrabberItem() == nullptr);
    grip_ = event->globalPosition().toPoint() - position();
}

void WaterWindow::mouseMoveEvent(QMouseEvent* event) {
    PlacedWindow::mouseMoveEvent(event);
    if (dragged_ && (event->buttons() & Qt::LeftButton) != 0)
        moveBy(event->globalPosition().toPoint() - grip_ - position());
}

void WaterWindow::mouseReleaseEvent(QMouseEvent* event) {
    dragged_ = false;
    PlacedWindow::mouseReleaseEvent(event);
}

} // namespace kelpa
