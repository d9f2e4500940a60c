#pragma once

struct wl_output;
struct wl_surface;
struct zwlr_layer_shell_v1;
struct zwlr_layer_surface_v1;

#include <cstdint>
#include <memory>

namespace kelpa::view {

/// What a compositor offers for panels, screen covers and the like: surfaces above all windows that stand
/// where they are told to.
class LayerShell {
  public:
    /// Null where the compositor does not offer it. Waits for one answer of the compositor.
    static std::unique_ptr<LayerShell> find();
    ~LayerShell();
    LayerShell(const LayerShell&) = delete;
    LayerShell& operator=(const LayerShell&) = delete;

    /// Gives the surface, which has no role yet and nothing on it, its place in a layer. The caller destroys
    /// what it gets, before the surface.
    [[nodiscard]] zwlr_layer_surface_v1* makeSurface(wl_surface* surface, wl_output* output,
                                                     std::uint32_t layer);

  private:
    explicit LayerShell(zwlr_layer_shell_v1* shell) : shell_(shell) {}

    zwlr_layer_shell_v1* shell_;
};

} // namespace kelpa::view
