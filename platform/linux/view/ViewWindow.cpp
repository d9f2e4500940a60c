#include "platform/linux/view/ViewWindow.h"

#include "platform/linux/helper/ViewProtocol.h"

#include <QJsonDocument>
#include <QKeyEvent>
#include <QMetaProperty>
#include <QQmlComponent>
#include <QQmlEngine>
#include <stdexcept>

namespace kelpa::view {

namespace word = wire::view;

ViewWindow::ViewWindow(QQmlEngine& engine, const QString& file) : content_(makeItem(engine, file)) {
    ViewWindow::followBackground();
    connect(content_.get(), SIGNAL(action(QString, QString)), this, SLOT(act(QString, QString)));
    connect(content_.get(), SIGNAL(colorChanged()), this, SLOT(followBackground()));
}

ViewWindow::~ViewWindow() {
    if (program_ != nullptr)
        program_->remove(number_);
    hide();
}

void ViewWindow::join(wire::Connection& program, int number) {
    program_ = &program;
    number_ = number;
    program.add(number, *this);
}

void ViewWindow::hear(const wire::Message& message) {
    if (message.verb() == word::set)
        setContentProperty(QByteArray::fromStdString(message.field(1)),
                           QString::fromStdString(message.field(2)));
    else if (message.verb() == word::show)
        comeForward();
    else if (message.verb() == word::hide)
        disappear();
    else if (message.verb() == word::alpha)
        setAlpha(message.real(1).value_or(1));
    else if (message.verb() == word::fade)
        fadeTo(message.real(1).value_or(1), message.real(2).value_or(0));
    else
        qWarning("No window does \"%s\".", message.verb().c_str());
}

void ViewWindow::comeForward() {
    emit called();
    appear();
}

void ViewWindow::act(const QString& name, const QString& value) {
    say(word::action, name.toStdString(), value.toStdString());
}

std::unique_ptr<QQuickItem> ViewWindow::makeItem(QQmlEngine& engine, const QString& file) {
    QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/Kelpa/") + file));
    std::unique_ptr<QQuickItem> item(qobject_cast<QQuickItem*>(component.create()));
    if (item == nullptr)
        throw std::runtime_error(component.errorString().toStdString());
    item->setParentItem(contentItem());
    return item;
}

void ViewWindow::followBackground() {
    setColor(content_->property("color").value<QColor>());
}

void ViewWindow::resizeEvent(QResizeEvent* event) {
    QQuickWindow::resizeEvent(event);
    content_->setSize(QSizeF(event->size()));
}

bool ViewWindow::event(QEvent* event) {
    const auto* key = dynamic_cast<const QKeyEvent*>(event);
    if (key == nullptr || key->key() != Qt::Key_Enter)
        return QQuickWindow::event(event);
    QKeyEvent same(key->type(), Qt::Key_Return, key->modifiers(), key->text(), key->isAutoRepeat());
    const bool taken = QQuickWindow::event(&same);
    event->setAccepted(same.isAccepted());
    return taken;
}

/// What has parts comes as one JSON value, which a page keeps in a property of any type.
void ViewWindow::setContentProperty(const QByteArray& name, const QString& value) {
    const QMetaObject& page = *content_->metaObject();
    const QMetaProperty property = page.property(page.indexOfProperty(name.constData()));
    const bool parts = property.metaType() == QMetaType::fromType<QVariant>();
    const QVariant told = parts ? QJsonDocument::fromJson(value.toUtf8()).toVariant() : value;
    if (!property.write(content_.get(), told))
        qWarning("The page %s has no %s.", page.className(), name.constData());
}

} // namespace kelpa::view
