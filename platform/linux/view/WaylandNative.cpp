#include "platform/linux/view/WaylandNative.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <algorithm>
#include <qpa/qplatformnativeinterface.h>
#include <string_view>
#include <wayland-client.h>

namespace kelpa::wayland {

namespace {

QPlatformNativeInterface& native() {
    return *QGuiApplication::platformNativeInterface();
}

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

/// What is wanted of the compositor's offers, and what came of it.
struct Wish {
    const wl_interface& interface;
    std::uint32_t version;
    void* bound = nullptr;
};

void onGlobal(void* data, wl_registry* registry, std::uint32_t number, const char* interface,
              std::uint32_t version) {
    auto& wish = *static_cast<Wish*>(data);
    if (wish.bound == nullptr && std::string_view(interface) == wish.interface.name)
        wish.bound = wl_registry_bind(registry, number, &wish.interface, std::min(version, wish.version));
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

wl_pointer* pointer() {
    return static_cast<wl_pointer*>(native().nativeResourceForIntegration("wl_pointer"));
}

void* bind(const wl_interface& interface, std::uint32_t version) {
    static constexpr wl_registry_listener listener{onGlobal, [](void*, wl_registry*, std::uint32_t) {}};
    Wish wish{interface, version};
    AnswerQueue queue(display());
    wl_registry* registry = queue.registry();
    wl_registry_add_listener(registry, &listener, &wish);
    queue.wait();
    wl_registry_destroy(registry);
    // What the object and those that it makes are told comes with everything else that Qt reads.
    if (wish.bound != nullptr)
        wl_proxy_set_queue(static_cast<wl_proxy*>(wish.bound), nullptr);
    return wish.bound;
}

} // namespace kelpa::wayland
