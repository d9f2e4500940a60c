#pragma once

#include <QPointF>
#include <cstdint>
#include <functional>
#include <memory>
#include <string_view>

class QQuickWindow;
class QScreen;
struct wl_compositor;
struct wl_display;
struct wl_interface;
struct wl_output;
struct wl_surface;
struct zwp_relative_pointer_manager_v1;
struct zwp_relative_pointer_v1;

/// The Wayland objects behind what Qt has made: null where there is none, and never to be destroyed. And more
/// of them over the same connection.
namespace kelpa::view::wayland {

[[nodiscard]] wl_display* display();
[[nodiscard]] wl_compositor* compositor();
[[nodiscard]] wl_output* output(QScreen& screen);
[[nodiscard]] wl_surface* surface(QQuickWindow& window);

/// Whether the compositor offers something under the interface's name. Waits for one answer of it.
[[nodiscard]] bool offers(std::string_view interface);

/// Takes up what the compositor offers under the interface's name, in no higher a version than `version`.
/// Null where it does not offer that. The caller destroys what it gets, and waits for one answer of the
/// compositor.
[[nodiscard]] void* bind(const wl_interface& interface, std::uint32_t version);

/// How far the pointer goes, whatever moves under it.
class RelativePointer {
  public:
    /// Null where the compositor does not tell.
    static std::unique_ptr<RelativePointer> find();
    ~RelativePointer();
    RelativePointer(const RelativePointer&) = delete;
    RelativePointer& operator=(const RelativePointer&) = delete;

    /// Runs `moved` with each motion over our own windows until `rest`; the latest call counts. Without a
    /// pointer, does nothing.
    void follow(std::function<void(QPointF distance)> moved);
    void rest();

  private:
    explicit RelativePointer(zwp_relative_pointer_manager_v1* manager) : manager_(manager) {}

    zwp_relative_pointer_manager_v1* manager_;
    zwp_relative_pointer_v1* motion_ = nullptr; ///< null while nobody follows
    std::function<void(QPointF distance)> moved_;
};

} // namespace kelpa::view::wayland
