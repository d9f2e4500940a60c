#include "platform/linux/view/BreakWindow.h"

#include "ui/Window.h"

#include <QKeyEvent>
#include <QQuickItem>

namespace kelpa::view {

namespace {

/// Keys that are pressed so soon were meant for what was there before.
constexpr auto deafMilliseconds = static_cast<qint64>(1000 * deafSeconds(WindowStyle::FullSizeContent));

} // namespace

BreakWindow::BreakWindow(Stage& stage, QQmlEngine& engine)
    : PlacedWindow(stage, engine, QStringLiteral("BreakScreen.qml"), WindowRole::Cover) {}

void BreakWindow::appeared() {
    shown_.start();
    // No button is the one that Enter would press.
    if (QQuickItem* item = activeFocusItem())
        item->setFocus(false);
}

void BreakWindow::keyPressEvent(QKeyEvent* event) {
    const bool deaf = !staying() || !shown_.isValid() || shown_.elapsed() < deafMilliseconds;
    if (deaf || event->isAutoRepeat())
        return;
    if (event->key() == Qt::Key_Escape)
        leave();
    else
        PlacedWindow::keyPressEvent(event);
}

void BreakWindow::leave() {
    if (content().property("skipOffered").toBool())
        emit action(QStringLiteral("skip"), {});
}

void BreakWindow::keyReleaseEvent(QKeyEvent* event) {
    if (staying())
        PlacedWindow::keyReleaseEvent(event);
}

} // namespace kelpa::view
