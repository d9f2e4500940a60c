#include "platform/linux/view/WaylandNative.h"

#include <QGuiApplication>
#include <QQuickWindow>
#include <algorithm>
#include <qpa/qplatformnativeinterface.h>
#include <relative-pointer.h>
#include <utility>
#include <wayland-client.h>

namespace kelpa::view::wayland {

namespace {

QPlatformNativeInterface& native() {
    return *QGuiApplication::platformNativeInterface();
}

/// Something that the compositor may offer; version 0 where it does not.
struct Offer {
    std::string_view name;
    std::uint32_t number = 0;
    std::uint32_t version = 0;
};

void onGlobal(void* data, wl_registry* /*registry*/, std::uint32_t number, const char* interface,
              std::uint32_t version) {
    auto& offer = *static_cast<Offer*>(data);
    if (offer.version == 0 && offer.name == interface) {
        offer.number = number;
        offer.version = version;
    }
}

/// All that the compositor offers, asked for apart from everything that Qt handles.
class Registry {
  public:
    Registry() : queue_(wl_display_create_queue(display())) {
        auto* wrapped = static_cast<wl_display*>(wl_proxy_create_wrapper(display()));
        wl_proxy_set_queue(reinterpret_cast<wl_proxy*>(wrapped), queue_);
        registry_ = wl_display_get_registry(wrapped);
        wl_proxy_wrapper_destroy(wrapped);
    }
    ~Registry() {
        wl_registry_destroy(registry_);
        wl_event_queue_destroy(queue_);
    }
    Registry(const Registry&) = delete;
    Registry& operator=(const Registry&) = delete;

    /// To be called once.
    Offer find(std::string_view name) {
        static constexpr wl_registry_listener listener{onGlobal, [](void*, wl_registry*, std::uint32_t) {}};
        Offer offer{name};
        wl_registry_add_listener(registry_, &listener, &offer);
        wl_display_roundtrip_queue(display(), queue_);
        return offer;
    }
    void* bind(const Offer& offer, const wl_interface& interface, std::uint32_t version) {
        return wl_registry_bind(registry_, offer.number, &interface, std::min(offer.version, version));
    }

  private:
    wl_event_queue* queue_;
    wl_registry* registry_;
};

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

bool offers(std::string_view interface) {
    return Registry().find(interface).version != 0;
}

void* bind(const wl_interface& interface, std::uint32_t version) {
    Registry registry;
    const Offer offer = registry.find(interface.name);
    if (offer.version == 0)
        return nullptr;
    void* bound = registry.bind(offer, interface, version);
    // What the object and those that it makes are told comes with everything else that Qt reads.
    wl_proxy_set_queue(static_cast<wl_proxy*>(bound), nullptr);
    return bound;
}

std::unique_ptr<RelativePointer> RelativePointer::find() {
    auto* manager =
        static_cast<zwp_relative_pointer_manager_v1*>(bind(zwp_relative_pointer_manager_v1_interface, 1));
    return manager == nullptr ? nullptr : std::unique_ptr<RelativePointer>(new RelativePointer(manager));
}

RelativePointer::~RelativePointer() {
    rest();
    zwp_relative_pointer_manager_v1_destroy(manager_);
}

void RelativePointer::follow(std::function<void(QPointF distance)> moved) {
    static constexpr zwp_relative_pointer_v1_listener listener{
        [](void* self, zwp_relative_pointer_v1*, std::uint32_t, std::uint32_t, wl_fixed_t right,
           wl_fixed_t down, wl_fixed_t, wl_fixed_t) {
            static_cast<RelativePointer*>(self)->moved_(
                QPointF(wl_fixed_to_double(right), wl_fixed_to_double(down)));
        }};
    rest();
    auto* device = static_cast<wl_pointer*>(native().nativeResourceForIntegration("wl_pointer"));
    if (device == nullptr)
        return;
    moved_ = std::move(moved);
    motion_ = zwp_relative_pointer_manager_v1_get_relative_pointer(manager_, device);
    zwp_relative_pointer_v1_add_listener(motion_, &listener, this);
    wl_display_flush(display());
}

void RelativePointer::rest() {
    if (motion_ != nullptr)
        zwp_relative_pointer_v1_destroy(std::exchange(motion_, nullptr));
}

} // namespace kelpa::view::wayland
