#include "platform/linux/view/AboutWindow.h"

#include "platform/linux/helper/ViewProtocol.h"

#include <QJsonDocument>
#include <QJsonObject>
#include <QQuickItem>
#include <QtMath>

namespace kelpa::view {

AboutWindow::AboutWindow(QQmlEngine& engine) : ManagedWindow(engine, QStringLiteral("About.qml")) {
    setFlags(Qt::Dialog);
}

void AboutWindow::setContentProperty(const QByteArray& name, const QString& value) {
    if (name == wire::view::about.data())
        content().setProperty("about", QJsonDocument::fromJson(value.toUtf8()).object().toVariantMap());
    else
        ManagedWindow::setContentProperty(name, value);
}

QSize AboutWindow::firstSize() const {
    return {qCeil(content().implicitWidth()), qCeil(content().implicitHeight())};
}

void AboutWindow::appear() {
    // Only what was drawn once knows its size.
    if (!isVisible()) {
        resize(around(firstSize()));
        grabWindow();
    }
    setMinimumSize(around(firstSize()));
    setMaximumSize(around(firstSize()));
    ManagedWindow::appear();
}

} // namespace kelpa::view
