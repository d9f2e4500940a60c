#pragma once

#include "platform/linux/view/PlacedWindow.h"

#include <QElapsedTimer>

namespace kelpa {

/// Covers a whole screen, above everything else and beyond the reach of the window manager.
class BreakWindow : public PlacedWindow {
    Q_OBJECT

  public:
    explicit BreakWindow(QQmlEngine& engine);

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

} // namespace kelpa
