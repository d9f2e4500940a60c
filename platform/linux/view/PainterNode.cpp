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

} // namespace kelpa::view
