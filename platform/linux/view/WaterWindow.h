#pragma once

#include "platform/linux/view/PlacedWindow.h"

#include <QElapsedTimer>
#include <QRect>
#include <optional>

namespace kelpa::view {

/// The water panel: floats in its corner above everything but breaks, dragged by its background. Nobody asked
/// for it, so it takes the keyboard only once no key has been pressed for a moment.
class WaterWindow : public PlacedWindow {
    Q_OBJECT

  public:
    WaterWindow(Stage& stage, QQmlEngine& engine);

    void takeKeyboard() override;
    void disappear() override;

  protected:
    void focusInEvent(QFocusEvent* event) override;
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void appeared() override;

  private:
    [[nodiscard]] bool deaf() const;
    /// Does nothing for a press that a control took.
    void beginDragOf(const QMouseEvent& press);
    /// Ends a drag, if there is one.
    void drop();

    QElapsedTimer focused_;
    std::optional<QRect> heldAt_; ///< where it was when a drag began
};

} // namespace kelpa::view
