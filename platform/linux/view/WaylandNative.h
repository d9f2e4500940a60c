#pragma once

class QQuickWindow;
class QScreen;
struct wl_compositor;
struct wl_display;
struct wl_output;
struct wl_surface;

/// The Wayland objects behind what Qt has made. Null where there is none; never to be destroyed.
namespace kelpa::wayland {

[[nodiscard]] wl_display* display();
[[nodiscard]] wl_compositor* compositor();
[[nodiscard]] wl_output* output(QScreen& screen);
[[nodiscard]] wl_surface* surface(QQuickWindow& window);

} // namespace kelpa::wayland
