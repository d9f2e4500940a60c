#include "platform/linux/view/Stage.h"

#include "platform/linux/view/WaylandStage.h"
#include "platform/linux/view/X11Stage.h"

#include <QGuiApplication>

namespace kelpa::view {

std::unique_ptr<Stage> makeStage() {
    if (QGuiApplication::platformName() == QStringLiteral("wayland"))
        return std::make_unique<WaylandStage>();
    return std::make_unique<X11Stage>();
}

} // namespace kelpa::view
