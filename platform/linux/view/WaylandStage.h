#pragma once

#include "platform/linux/view/LayerShell.h"
#include "platform/linux/view/RelativePointer.h"
#include "platform/linux/view/Stage.h"

namespace kelpa::view {

/// A Wayland compositor. It gives the keyboard to the surfaces that say they want it, and keeps layers in
/// order.
class WaylandStage final : public Stage {
  public:
    WaylandStage();
    std::unique_ptr<WindowHost> makeHost(QQuickWindow& window, QQuickItem& content, WindowRole role) override;
    void guardKeyboard(QQuickWindow*) override {}
    void focusGuarded() override {}
    void keepOnTop(const std::vector<QQuickWindow*>&) override {}

  private:
    std::unique_ptr<LayerShell> layers_;       ///< null where the compositor has no layers
    std::unique_ptr<RelativePointer> pointer_; ///< null where it tells only where the pointer is
};

} // namespace kelpa::view
