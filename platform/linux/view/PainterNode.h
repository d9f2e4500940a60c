#pragma once

#include <QSGRenderNode>
#include <functional>

class QPainter;
class QQuickWindow;

namespace kelpa::view {

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

} // namespace kelpa::view
