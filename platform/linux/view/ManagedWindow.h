#pragma once

#include "platform/linux/view/Delay.h"
#include "platform/linux/view/Stage.h"
#include "platform/linux/view/ViewWindow.h"

#include <memory>

namespace kelpa::view {

/// An ordinary window, which the window manager moves and stacks, and decorates unless it leaves that to
/// windows. A person asked for it, so it takes the keyboard at once. It begins in the middle of its screen,
/// later where it was closed.
class ManagedWindow : public ViewWindow {
  public:
    /// The stage outlives the window.
    ManagedWindow(Stage& stage, QQmlEngine& engine, const QString& file);

    void setPlace(const QRect& bounds, const QString& connector) override;
    void appear() override;
    void disappear() override { hide(); }
    void takeKeyboard() override { stage_.activate(*this); }

  protected:
    /// How large its content is at first, in the toolkit's units.
    [[nodiscard]] virtual QSize firstSize() const = 0;
    /// Gives a person a key, as QKeySequence writes it, that closes the window.
    void closeBy(const QString& keys);
    /// The window's size around content of that size.
    [[nodiscard]] QSize around(const QSize& content) const { return content + QSize(0, titleHeight_); }
    void closeEvent(QCloseEvent* event) override;
    void exposeEvent(QExposeEvent* event) override;
    void moveEvent(QMoveEvent* event) override;
    void resizeEvent(QResizeEvent* event) override;
    void followBackground() override;

  private:
    /// Waits until the window manager has left the window alone for a moment.
    void rest();
    [[nodiscard]] QRect firstPlace() const;
    [[nodiscard]] QSize firstSizeIn(QSize room) const;

    Stage& stage_;
    std::unique_ptr<QQuickItem> frame_; ///< title bar and edges; null where the window manager draws them
    int titleHeight_ = 0;               ///< of that frame, in the toolkit's units
    QString connector_;
    bool fresh_ = false; ///< until it has come to rest in its frame
    /// Since it was last moved or uncovered while it is fresh.
    Delay framed_{std::chrono::milliseconds(200), [this] {
                      fresh_ = false;
                      stage_.showAgain(*this);
                  }};
    QRect bounds_; ///< where it was, and how large its content; null the first time
};

} // namespace kelpa::view
