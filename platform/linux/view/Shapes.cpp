#include "platform/linux/view/Shapes.h"

#include <QFile>
#include <QPainter>
#include <QQuickWindow>
#include <QSGRenderNode>
#include <QSGRendererInterface>
#include <QSvgRenderer>
#include <algorithm>
#include <functional>

namespace kelpa::view {

namespace {

/// Draws with the very painter that the window's other parts are drawn with, so that shapes are smooth at
/// every scale factor.
class PainterNode final : public QSGRenderNode {
  public:
    explicit PainterNode(QQuickWindow& window) : window_(window) {}

    /// `draw` is called with the item's own coordinates and keeps inside `box`.
    void setDrawing(const QRectF& box, std::function<void(QPainter&)> draw) {
        box_ = box;
        draw_ = std::move(draw);
        markDirty(QSGNode::DirtyMaterial);
    }

    void render(const RenderState* state) override;
    [[nodiscard]] RenderingFlags flags() const override { return BoundedRectRendering; }
    [[nodiscard]] QRectF rect() const override { return box_; }

  private:
    QQuickWindow& window_;
    QRectF box_;
    std::function<void(QPainter&)> draw_;
};

void PainterNode::render(const RenderState* state) {
    auto* painter = static_cast<QPainter*>(
        window_.rendererInterface()->getResource(&window_, QSGRendererInterface::PainterResource));
    const QRegion* seen = state->clipRegion();
    // Nothing is seen of what has been scrolled out of its list, and still it is asked to draw itself.
    if (painter == nullptr || !draw_ || (seen != nullptr && seen->isEmpty()))
        return;
    if (seen != nullptr)
        painter->setClipRegion(*seen, Qt::ReplaceClip);
    painter->setTransform(matrix()->toTransform());
    painter->setOpacity(inheritedOpacity());
    painter->setRenderHint(QPainter::Antialiasing);
    draw_(*painter);
}

} // namespace

RoundedBox::RoundedBox(QQuickItem* parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
    connect(this, &RoundedBox::changed, this, &QQuickItem::update);
}

QSGNode* RoundedBox::updatePaintNode(QSGNode* node, UpdatePaintNodeData* /*data*/) {
    auto* box = node != nullptr ? static_cast<PainterNode*>(node) : new PainterNode(*window());
    const qreal inset = borderWidth_ / 2;
    const QRectF line = boundingRect().adjusted(inset, inset, -inset, -inset);
    const qreal radius = std::max(0.0, std::min({radius_ - inset, line.width() / 2, line.height() / 2}));
    const QPen border = borderWidth_ > 0 ? QPen(borderColor_, borderWidth_) : QPen(Qt::NoPen);
    box->setDrawing(boundingRect(), [line, radius, border, color = color_](QPainter& painter) {
        painter.setPen(border);
        painter.setBrush(color);
        painter.drawRoundedRect(line, radius, radius);
    });
    return box;
}

Symbol::Symbol(QQuickItem* parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
    connect(this, &Symbol::changed, this, [this] {
        drawing_ = nullptr;
        update();
    });
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
