#include "platform/linux/view/WaterWindow.h"

#include "ui/Window.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QQuickItem>
#include <utility>

namespace kelpa::view {

namespace {

/// Keys that are pressed so soon were meant for what had the keyboard before.
constexpr auto deafMilliseconds = static_cast<qint64>(1000 * deafSeconds(WindowStyle::Panel));

} // namespace

WaterWindow::WaterWindow(Stage& stage, QQmlEngine& engine)
    : PlacedWindow(stage, engine, QStringLiteral("WaterPanel.qml"), WindowRole::Panel) {}

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

/// Whoever clicks the panel wants it.
void WaterWindow::mousePressEvent(QMouseEvent* event) {
    if (!isActive())
        host().takeKeyboard();
    PlacedWindow::mousePressEvent(event);
}

/// The controls are given a press only after the window's own function for it: whether one took it is known
/// here.
bool WaterWindow::event(QEvent* event) {
    const bool taken = PlacedWindow::event(event);
    if (event->type() == QEvent::MouseButtonPress)
        beginDragOf(*static_cast<const QMouseEvent*>(event));
    return taken;
}

void WaterWindow::beginDragOf(const QMouseEvent& press) {
    if (press.button() != Qt::LeftButton || press.exclusiveGrabber(press.points().first()) != nullptr)
        return;
    heldAt_ = host().place();
    host().beginDrag(press);
}

void WaterWindow::mouseMoveEvent(QMouseEvent* event) {
    PlacedWindow::mouseMoveEvent(event);
    if (heldAt_ && (event->buttons() & Qt::LeftButton) != 0)
        host().drag(*event);
}

void WaterWindow::mouseReleaseEvent(QMouseEvent* event) {
    drop();
    PlacedWindow::mouseReleaseEvent(event);
}

/// Of a button that is still held down then, the release goes to whatever lies beneath.
void WaterWindow::disappear() {
    drop();
    PlacedWindow::disappear();
}

void WaterWindow::drop() {
    const auto from = std::exchange(heldAt_, std::nullopt);
    if (!from)
        return;
    host().endDrag();
    if (host().place() != *from)
        emit dragged(host().place().topLeft());
}

} // namespace kelpa::view
