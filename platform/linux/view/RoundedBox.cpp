#include "platform/linux/view/RoundedBox.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGRenderNode>
#include <QSGRendererInterface>
#include <algorithm>

namespace kelpa {

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
    const qreal radius = std::min({look.radius - inset, box.width() / 2, box.height() / 2});
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(look.border);
    painter.setBrush(look.color);
    painter.drawRoundedRect(box, radius, radius);
}

/// Draws with the very painter that the window's other parts are drawn with.
class BoxNode final : public QSGRenderNode {
  public:
    explicit BoxNode(QQuickWindow& window) : window_(window) {}
    void setLook(const Look& look) { look_ = look; }

    void render(const RenderState* state) override {
        auto* painter = static_cast<QPainter*>(
            window_.rendererInterface()->getResource(&window_, QSGRendererInterface::PainterResource));
        if (painter == nullptr)
            return;
        if (state->clipRegion() != nullptr && !state->clipRegion()->isEmpty())
            painter->setClipRegion(*state->clipRegion(), Qt::ReplaceClip);
        painter->setTransform(matrix()->toTransform());
        painter->setOpacity(inheritedOpacity());
        draw(*painter, look_);
    }
    [[nodiscard]] RenderingFlags flags() const override { return BoundedRectRendering; }
    [[nodiscard]] QRectF rect() const override { return look_.box; }

  private:
    QQuickWindow& window_;
    Look look_;
};

} // namespace

RoundedBox::RoundedBox(QQuickItem* parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
    connect(this, &RoundedBox::changed, this, &QQuickItem::update);
}

QSGNode* RoundedBox::updatePaintNode(QSGNode* node, UpdatePaintNodeData* /*data*/) {
    auto* box = node != nullptr ? static_cast<BoxNode*>(node) : new BoxNode(*window());
    Look look{boundingRect(), color_, Qt::NoPen, radius_};
    if (borderWidth_ > 0)
        look.border = QPen(borderColor_, borderWidth_);
    box->setLook(look);
    box->markDirty(QSGNode::DirtyMaterial);
    return box;
}

} // namespace kelpa
