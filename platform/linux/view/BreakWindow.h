#pragma once

#include "platform/linux/view/PlacedWindow.h"

#include <QElapsedTimer>

namespace kelpa::view {

/// Covers a whole screen, above everything else.
class BreakWindow : public PlacedWindow {
    Q_OBJECT

  public:
    BreakWindow(Stage& stage, QQmlEngine& engine);

    [[nodiscard]] bool guardsKeyboard() const override { return true; }

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    void appeared() override;

  private:
    /// What Escape asks for: the same as Skip, and nothing where Skip is not offered.
    void leave();

    QElapsedTimer shown_;
};

} // namespace kelpa::view
