#include "platform/linux/view/Reminders.h"

#include <QKeyEvent>
#include <QMouseEvent>
#include <QQuickItem>
#include <utility>

namespace kelpa::view {

Reminder::Reminder(Stage& stage, QQmlEngine& engine, const QString& file, WindowRole role, WindowStyle style)
    : PlacedWindow(stage, engine, file, role),
      deafMilliseconds_(static_cast<qint64>(1000 * deafSeconds(style))) {}

bool Reminder::deaf() const {
    return !staying() || !hearing_.isValid() || hearing_.elapsed() < deafMilliseconds_;
}

void Reminder::keyPressEvent(QKeyEvent* event) {
    if (!deaf())
        PlacedWindow::keyPressEvent(event);
}

void Reminder::keyReleaseEvent(QKeyEvent* event) {
    if (!deaf())
        PlacedWindow::keyReleaseEvent(event);
}

BreakWindow::BreakWindow(Stage& stage, QQmlEngine& engine)
    : Reminder(stage, engine, QStringLiteral("BreakScreen.qml"), WindowRole::Cover,
               WindowStyle::FullSizeContent) {}

void BreakWindow::appeared() {
    beginToHear();
    // No button is the one that Enter would press.
    if (QQuickItem* item = activeFocusItem())
        item->setFocus(false);
}

void BreakWindow::keyPressEvent(QKeyEvent* event) {
    if (event->isAutoRepeat())
        return;
    if (event->key() != Qt::Key_Escape)
        Reminder::keyPressEvent(event);
    else if (!deaf())
        leave();
}

void BreakWindow::leave() {
    if (content().property("skipOffered").toBool())
        emit action(QStringLiteral("skip"), {});
}

WaterWindow::WaterWindow(Stage& stage, QQmlEngine& engine)
    : Reminder(stage, engine, QStringLiteral("WaterPanel.qml"), WindowRole::Panel, WindowStyle::Panel) {}

/// Shown again while it has the keyboard, it is not given that a second time.
void WaterWindow::appeared() {
    if (isActive())
        beginToHear();
    else
        hearNothing();
    // No button is the one that Enter would press; Escape goes to the panel itself.
    content().forceActiveFocus();
}

void WaterWindow::takeKeyboard() {
    host().takeKeyboardInQuiet();
}

void WaterWindow::focusInEvent(QFocusEvent* event) {
    beginToHear();
    Reminder::focusInEvent(event);
}

/// Whoever clicks the panel wants it.
void WaterWindow::mousePressEvent(QMouseEvent* event) {
    if (!isActive())
        host().takeKeyboard();
    Reminder::mousePressEvent(event);
}

/// The controls are given a press only after the window's own function for it: whether one took it is known
/// here.
bool WaterWindow::event(QEvent* event) {
    const bool taken = Reminder::event(event);
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
    Reminder::mouseMoveEvent(event);
    if (heldAt_ && (event->buttons() & Qt::LeftButton) != 0)
        host().drag(*event);
}

void WaterWindow::mouseReleaseEvent(QMouseEvent* event) {
    drop();
    Reminder::mouseReleaseEvent(event);
}

/// Of a button that is still held down then, the release goes to whatever lies beneath.
void WaterWindow::disappear() {
    drop();
    Reminder::disappear();
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
