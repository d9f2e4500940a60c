#include "platform/linux/view/LayerShell.h"

#include "platform/linux/view/WaylandNative.h"

#include <algorithm>
#include <layer-shell.h>
#include <string_view>
#include <wayland-client.h>

namespace kelpa {

namespace {

constexpr std::uint32_t knownVersion = 4;
/// By which compositors' settings can tell these surfaces from others.
constexpr const char* purpose = "kelpa";

/// Where the answers to one question arrive, apart from everything that Qt handles.
class AnswerQueue {
  public:
    explicit AnswerQueue(wl_display* display) : display_(display), queue_(wl_display_create_queue(display)) {}
    ~AnswerQueue() { wl_event_queue_destroy(queue_); }
    AnswerQueue(const AnswerQueue&) = delete;
    AnswerQueue& operator=(const AnswerQueue&) = delete;

    wl_registry* registry() {
        auto* wrapped = static_cast<wl_display*>(wl_proxy_create_wrapper(display_));
        wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(wrapped), queue_);
        wl_registry* registry = wl_display_get_registry(wrapped);
        wl_proxy_wrapper_destroy(wrapped);
        return registry;
    }
    void wait() { wl_display_roundtrip_queue(display_, queue_); }

  private:
    wl_display* display_;
    wl_event_queue* queue_;
};

void onGlobal(void* data, wl_registry* registry, std::uint32_t number, const char* interface,
              std::uint32_t version) {
    auto*& shell = *static_cast<zwlr_layer_shell_v1**>(data);
    if (shell == nullptr && std::string_view(interface) == zwlr_layer_shell_v1_interface.name)
        shell = static_cast<zwlr_layer_shell_v1*>(wl_registry_bind(
            registry, number, &zwlr_layer_shell_v1_interface, std::min(version, knownVersion)));
}

} // namespace

std::unique_ptr<LayerShell> LayerShell::find() {
    static constexpr wl_registry_listener listener{onGlobal, [](void*, wl_registry*, std::uint32_t) {}};
    zwlr_layer_shell_v1* shell = nullptr;
    AnswerQueue queue(wayland::display());
    wl_registry* registry = queue.registry();
    wl_registry_add_listener(registry, &listener, &shell);
    queue.wait();
    wl_registry_destroy(registry);
    if (shell == nullptr)
        return nullptr;
    // What its surfaces are told comes with everything else that Qt reads.
    wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(shell), nullptr);
    return std::unique_ptr<LayerShell>(new LayerShell(shell));
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

} // namespace kelpa
