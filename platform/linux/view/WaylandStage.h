#pragma once

#include "platform/linux/view/LayerHost.h"

namespace kelpa::view {

/// A Wayland compositor. It gives the keyboard to the surfaces that say they want it, and keeps layers in
/// order.
class WaylandStage final : public Stage {
  public:
    WaylandStage();
    std::unique_ptr<WindowHost> makeHost(QQuickWindow& window, QQuickItem& content, WindowRole role) override;
    void askToFloat(QQuickWindow& window) override;
    void activate(QQuickWindow& window) override;
    [[nodiscard]] int heightLeftByBars(int available) const override;
    [[nodiscard]] bool windowsDrawFrames() const override;
    [[nodiscard]] bool inputIsOurs() const override { return true; }

  private:
    std::unique_ptr<LayerShell> layers_;                ///< null where the compositor has no layers
    std::unique_ptr<wayland::RelativePointer> pointer_; ///< null where it tells only where the pointer is
};

} // namespace kelpa::view
