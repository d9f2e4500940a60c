#include "platform/linux/view/LayerShell.h"

#include "platform/linux/view/WaylandNative.h"

#include <layer-shell.h>
#include <wayland-client.h>

namespace kelpa::view {

namespace {

constexpr std::uint32_t knownVersion = 4;
/// By which compositors' settings can tell these surfaces from others.
constexpr const char* purpose = "kelpa";

} // namespace

std::unique_ptr<LayerShell> LayerShell::find() {
    auto* shell =
        static_cast<zwlr_layer_shell_v1*>(wayland::bind(zwlr_layer_shell_v1_interface, knownVersion));
    return shell == nullptr ? nullptr : std::unique_ptr<LayerShell>(new LayerShell(shell));
}

LayerShell::~LayerShell() {
    if (zwlr_layer_shell_v1_get_version(shell_) >= ZWLR_LAYER_SHELL_V1_DESTROY_SINCE_VERSION)
        zwlr_layer_shell_v1_destroy(shell_);
    else
        wl_proxy_destroy(reinterpret_cast<wl_proxy*>(shell_));
}

zwlr_layer_surface_v1* LayerShell::makeSurface(wl_surface* surface, wl_output* output, std::uint32_t layer) {
    return zwlr_layer_shell_v1_get_layer_surface(shell_, surface, output, layer, purpose);
}

} // namespace kelpa::view
