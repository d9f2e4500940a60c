#include "platform/linux/view/RelativePointer.h"

#include "platform/linux/view/WaylandNative.h"

#include <relative-pointer.h>
#include <utility>

namespace kelpa::view {

std::unique_ptr<RelativePointer> RelativePointer::find() {
    auto* manager = static_cast<zwp_relative_pointer_manager_v1*>(
        wayland::bind(zwp_relative_pointer_manager_v1_interface, 1));
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
    wl_pointer* pointer = wayland::pointer();
    if (pointer == nullptr)
        return;
    moved_ = std::move(moved);
    motion_ = zwp_relative_pointer_manager_v1_get_relative_pointer(manager_, pointer);
    zwp_relative_pointer_v1_add_listener(motion_, &listener, this);
    wl_display_flush(wayland::display());
}

void RelativePointer::rest() {
    if (motion_ != nullptr)
        zwp_relative_pointer_v1_destroy(std::exchange(motion_, nullptr));
}

} // namespace kelpa::view
