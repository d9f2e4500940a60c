#include "platform/linux/view/Symbol.h"

#include "platform/linux/view/PainterNode.h"

#include <QFile>
#include <QPainter>
#include <QQuickWindow>
#include <QSvgRenderer>

namespace kelpa::view {

namespace {

constexpr qreal usualSize = 24;

} // namespace

Symbol::Symbol(QQuickItem* parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
    setImplicitSize(usualSize, usualSize);
    connect(this, &Symbol::changed, this, &QQuickItem::update);
}

Symbol::~Symbol() = default;

void Symbol::setName(const QString& name) {
    if (name == name_)
        return;
    name_ = name;
    drawing_ = nullptr;
    emit changed();
}

void Symbol::setColor(const QColor& color) {
    if (color == color_)
        return;
    color_ = color;
    drawing_ = nullptr;
    emit changed();
}

void Symbol::load() {
    QFile file(QStringLiteral(":/symbols/%1.svg").arg(name_));
    if (!file.open(QIODevice::ReadOnly))
        qWarning("There is no symbol %s.", qPrintable(name_));
    const QByteArray drawn = file.readAll().replace("currentColor", color_.name().toLatin1());
    drawing_ = std::make_shared<QSvgRenderer>(drawn);
}

QSGNode* Symbol::updatePaintNode(QSGNode* node, UpdatePaintNodeData* /*data*/) {
    if (name_.isEmpty()) {
        delete node;
        return nullptr;
    }
    if (!drawing_)
        load();
    auto* box = node != nullptr ? static_cast<PainterNode*>(node) : new PainterNode(*window());
    box->setDrawing(boundingRect(), [drawing = drawing_, place = boundingRect()](QPainter& painter) {
        drawing->render(&painter, place);
    });
    return box;
}

} // namespace kelpa::view
