#include "platform/linux/view/WaylandStage.h"

#include "platform/linux/view/LayerHost.h"
#include "platform/linux/view/ToplevelHost.h"

#include <QtGlobal>

namespace kelpa::view {

WaylandStage::WaylandStage() {
    if (qgetenv("KELPA_LAYER_SHELL") != "no")
        layers_ = LayerShell::find();
    if (layers_)
        pointer_ = RelativePointer::find();
}

std::unique_ptr<WindowHost> WaylandStage::makeHost(QQuickWindow& window, QQuickItem& content,
                                                   WindowRole role) {
    if (layers_)
        return std::make_unique<LayerHost>(LayerTools{*layers_, pointer_.get()}, window, content, role);
    return std::make_unique<ToplevelHost>(window, content, role);
}

} // namespace kelpa::view
