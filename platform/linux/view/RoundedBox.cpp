#include "platform/linux/view/RoundedBox.h"

#include "platform/linux/view/PainterNode.h"

#include <QPainter>
#include <QQuickWindow>
#include <algorithm>

namespace kelpa::view {

namespace {

struct Look {
    QRectF box;
    QColor color;
    QPen border = Qt::NoPen;
    qreal radius = 0;
};

void draw(QPainter& painter, const Look& look) {
    const qreal inset = look.border.style() == Qt::NoPen ? 0 : look.border.widthF() / 2;
    const QRectF box = look.box.adjusted(inset, inset, -inset, -inset);
    const qreal radius = std::max(0.0, std::min({look.radius - inset, box.width() / 2, box.height() / 2}));
    painter.setPen(look.border);
    painter.setBrush(look.color);
    painter.drawRoundedRect(box, radius, radius);
}

} // namespace

RoundedBox::RoundedBox(QQuickItem* parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
    connect(this, &RoundedBox::changed, this, &QQuickItem::update);
}

QSGNode* RoundedBox::updatePaintNode(QSGNode* node, UpdatePaintNodeData* /*data*/) {
    auto* box = node != nullptr ? static_cast<PainterNode*>(node) : new PainterNode(*window());
    Look look{boundingRect(), color_, Qt::NoPen, radius_};
    if (borderWidth_ > 0)
        look.border = QPen(borderColor_, borderWidth_);
    box->setDrawing(boundingRect(), [look](QPainter& painter) { draw(painter, look); });
    return box;
}

} // namespace kelpa::view
