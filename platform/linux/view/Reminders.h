#pragma once

#include "platform/linux/view/PlacedWindow.h"
#include "ui/Window.h"

#include <QElapsedTimer>
#include <QRect>
#include <optional>

namespace kelpa::view {

/// A window that comes by itself. Keys that are pressed soon after were meant for what was there before.
class Reminder : public PlacedWindow {
    Q_OBJECT

  protected:
    Reminder(Stage& stage, QQmlEngine& engine, const QString& file, WindowRole role, WindowStyle style);

    void keyPressEvent(QKeyEvent* event) override;
    void keyReleaseEvent(QKeyEvent* event) override;
    /// Its deaf seconds begin; before that it hears no key at all.
    void beginToHear() { hearing_.start(); }
    void hearNothing() { hearing_.invalidate(); }
    [[nodiscard]] bool deaf() const;

  private:
    qint64 deafMilliseconds_;
    QElapsedTimer hearing_;
};

/// Covers a whole screen, above everything else.
class BreakWindow : public Reminder {
    Q_OBJECT

  public:
    BreakWindow(Stage& stage, QQmlEngine& engine);

    [[nodiscard]] bool guardsKeyboard() const override { return true; }

  protected:
    void keyPressEvent(QKeyEvent* event) override;
    void appeared() override;

  private:
    /// What Escape asks for: the same as Skip, and nothing where Skip is not offered.
    void leave();
};

/// The water panel: floats in its corner above everything but breaks, dragged by its background. Nobody asked
/// for it, so it takes the keyboard only once no key has been pressed for a moment.
class WaterWindow : public Reminder {
    Q_OBJECT

  public:
    WaterWindow(Stage& stage, QQmlEngine& engine);

    void takeKeyboard() override;
    void disappear() override;

  protected:
    void focusInEvent(QFocusEvent* event) override;
    bool event(QEvent* event) override;
    void mousePressEvent(QMouseEvent* event) override;
    void mouseMoveEvent(QMouseEvent* event) override;
    void mouseReleaseEvent(QMouseEvent* event) override;
    void appeared() override;

  private:
    /// Does nothing for a press that a control took.
    void beginDragOf(const QMouseEvent& press);
    /// Ends a drag, if there is one.
    void drop();

    std::optional<QRect> heldAt_; ///< where it was when a drag began
};

} // namespace kelpa::view
