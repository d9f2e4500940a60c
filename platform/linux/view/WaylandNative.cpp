#include "platform/linux/view/WaylandNative.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <qpa/qplatformnativeinterface.h>

namespace kelpa::wayland {

namespace {

QPlatformNativeInterface& native() {
    return *QGuiApplication::platformNativeInterface();
}

} // namespace

wl_display* display() {
    return static_cast<wl_display*>(native().nativeResourceForIntegration("wl_display"));
}

wl_compositor* compositor() {
    return static_cast<wl_compositor*>(native().nativeResourceForIntegration("compositor"));
}

wl_output* output(QScreen& screen) {
    return static_cast<wl_output*>(native().nativeResourceForScreen("output", &screen));
}

wl_surface* surface(QQuickWindow& window) {
    return static_cast<wl_surface*>(native().nativeResourceForWindow("surface", &window));
}

} // namespace kelpa::wayland
