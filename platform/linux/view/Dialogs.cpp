#include "platform/linux/view/Dialogs.h"

#include "platform/linux/helper/ViewProtocol.h"

#include <QQuickItem>
#include <QtMath>

namespace kelpa::view {

Dialog::Dialog(Stage& stage, QQmlEngine& engine, const QString& file) : ManagedWindow(stage, engine, file) {
    setFlags(Qt::Dialog);
    closeBy(QStringLiteral("Esc"));
}

QSize Dialog::firstSize() const {
    return {qCeil(content().implicitWidth()), qCeil(content().implicitHeight())};
}

void Dialog::fixSize() {
    const QSize size = around(firstSize());
    setMinimumSize(size);
    setMaximumSize(size);
}

void AboutWindow::appear() {
    // Only what was drawn once knows its size.
    if (!isVisible()) {
        resize(around(firstSize()));
        grabWindow();
    }
    fixSize();
    ManagedWindow::appear();
}

HistoryWindow::HistoryWindow(Stage& stage, QQmlEngine& engine)
    : ManagedWindow(stage, engine, QStringLiteral("History.qml")) {
    setFlags(Qt::Window);
    setMinimumSize(around({520, 380}));
}

bool HistoryWindow::event(QEvent* event) {
    if (event->type() == QEvent::FocusIn)
        emit action(QString::fromUtf8(wire::view::cameToFrontAction.data()), {});
    return ManagedWindow::event(event);
}

UpdateWindow::UpdateWindow(Stage& stage, QQmlEngine& engine)
    : Dialog(stage, engine, QStringLiteral("Update.qml")) {
    // The toolkit tells the window manager so.
    setProperty("_q_showWithoutActivating", true);
    connect(&content(), &QQuickItem::implicitHeightChanged, this, &UpdateWindow::fit);
}

void UpdateWindow::fit() {
    fixSize();
    resize(around(firstSize()));
}

void UpdateWindow::appear() {
    fit();
    if (!isVisible())
        ManagedWindow::appear();
}

} // namespace kelpa::view
