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

constexpr qreal usualSize = 24;

/// Draws with the very painter that the window's other parts are drawn with, so that shapes are smooth at
/// every scale factor.
class PainterNode final : public QSGRenderNode {
  public:
    explicit PainterNode(QQuickWindow& window) : window_(window) {}

    /// `draw` is called with the item's own coordinates and keeps inside `box`.
    void setDrawing(const QRectF& box, std::function<void(QPainter&)> draw);

    void render(const RenderState* state) override;
    [[nodiscard]] RenderingFlags flags() const override { return BoundedRectRendering; }
    [[nodiscard]] QRectF rect() const override { return box_; }

  private:
    QQuickWindow& window_;
    QRectF box_;
    std::function<void(QPainter&)> draw_;
};

void PainterNode::setDrawing(const QRectF& box, std::function<void(QPainter&)> draw) {
    box_ = box;
    draw_ = std::move(draw);
    markDirty(QSGNode::DirtyMaterial);
}

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
