#include "platform/linux/view/PainterNode.h"

#include <QPainter>
#include <QQuickWindow>
#include <QSGRendererInterface>

namespace kelpa::view {

void PainterNode::setDrawing(const QRectF& box, std::function<void(QPainter&)> draw) {
    box_ = box;
    draw_ = std::move(draw);
    markDirty(QSGNode::DirtyMaterial);
}

void PainterNode::render(const RenderState* state) {
    auto* painter = static_cast<QPainter*>(
        window_.rendererInterface()->getResource(&window_, QSGRendererInterface::PainterResource));
    if (painter == nullptr || !draw_)
        return;
    if (state->clipRegion() != nullptr && !state->clipRegion()->isEmpty())
        painter->setClipRegion(*state->clipRegion(), Qt::ReplaceClip);
    painter->setTransform(matrix()->toTransform());
    painter->setOpacity(inheritedOpacity());
    painter->setRenderHint(QPainter::Antialiasing);
    draw_(*painter);
}

} // namespace kelpa::view
