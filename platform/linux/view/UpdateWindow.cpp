#include "platform/linux/view/UpdateWindow.h"

#include <QQuickItem>
#include <QtMath>

namespace kelpa::view {

UpdateWindow::UpdateWindow(QQmlEngine& engine) : ManagedWindow(engine, QStringLiteral("Update.qml")) {
    setFlags(Qt::Dialog);
    // The toolkit tells the window manager so.
    setProperty("_q_showWithoutActivating", true);
    connect(&content(), &QQuickItem::implicitHeightChanged, this, &UpdateWindow::fit);
}

QSize UpdateWindow::firstSize() const {
    return {qCeil(content().implicitWidth()), qCeil(content().implicitHeight())};
}

void UpdateWindow::fit() {
    const QSize size = around(firstSize());
    setMinimumSize(size);
    setMaximumSize(size);
    resize(size);
}

void UpdateWindow::appear() {
    fit();
    if (!isVisible())
        ManagedWindow::appear();
}

} // namespace kelpa::view
