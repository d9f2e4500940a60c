#include "platform/linux/view/ViewWindow.h"

#include "platform/linux/view/X11.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QScreen>
#include <stdexcept>

namespace kelpa::view {

ViewWindow::ViewWindow(QQmlEngine& engine, const QString& file) {
    makeContent(engine, file);
    ViewWindow::followBackground();
    connect(content_.get(), SIGNAL(action(QString, QString)), this, SIGNAL(action(QString, QString)));
    connect(content_.get(), SIGNAL(colorChanged()), this, SLOT(followBackground()));
}

/// What shows only in a window that is seen goes while everything it belongs to is still there.
ViewWindow::~ViewWindow() {
    hide();
}

void ViewWindow::makeContent(QQmlEngine& engine, const QString& file) {
    QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/Kelpa/") + file));
    content_.reset(qobject_cast<QQuickItem*>(component.create()));
    if (content_ == nullptr)
        throw std::runtime_error(component.errorString().toStdString());
    content_->setParentItem(contentItem());
}

void ViewWindow::followBackground() {
    setColor(content_->property("color").value<QColor>());
    if (handle() != nullptr && x11::connection() != nullptr)
        x11::setBackground(static_cast<xcb_window_t>(winId()), color());
}

QScreen* ViewWindow::screenOf(const QString& connector) {
    for (QScreen* screen : QGuiApplication::screens())
        if (screen->name() == connector)
            return screen;
    return QGuiApplication::primaryScreen();
}

void ViewWindow::resizeEvent(QResizeEvent* event) {
    QQuickWindow::resizeEvent(event);
    content_->setSize(QSizeF(event->size()));
}

void ViewWindow::setContentProperty(const QByteArray& name, const QString& value) {
    content_->setProperty(name.constData(), value);
}

} // namespace kelpa::view
