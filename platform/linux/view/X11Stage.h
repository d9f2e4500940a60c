#pragma once

#include "platform/linux/view/Keyboard.h"
#include "platform/linux/view/StackKeeper.h"
#include "platform/linux/view/Stage.h"

namespace kelpa::view {

/// An X server, where focus and place in the stack are ours to take and to defend.
class X11Stage final : public Stage {
  public:
    std::unique_ptr<WindowHost> makeHost(QQuickWindow& window, QQuickItem& content, WindowRole role) override;
    void guardKeyboard(QQuickWindow* window) override;
    void focusGuarded() override { keyboard_.takeFocus(); }
    void keepOnTop(const std::vector<QQuickWindow*>& windows) override;
    void fillBackground(QQuickWindow& window) override;
    void askToFloat(QQuickWindow& window) override;
    void showAgain(QQuickWindow& window) override;
    void activate(QQuickWindow& window) override;
    [[nodiscard]] int heightLeftByBars(int available) const override { return available; }
    [[nodiscard]] bool windowsDrawFrames() const override { return false; }
    /// The server tells the program itself.
    [[nodiscard]] bool inputIsOurs() const override { return false; }

  private:
    KeyboardGuard keyboard_;
    StackKeeper stack_;
};

} // namespace kelpa::view
