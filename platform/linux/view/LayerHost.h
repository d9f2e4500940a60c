#pragma once

#include "platform/linux/view/Stage.h"
#include "platform/linux/view/WaylandNative.h"

#include <QObject>
#include <QPointF>
#include <cstdint>
#include <memory>
#include <optional>
#include <vector>

struct zwlr_layer_shell_v1;
struct zwlr_layer_surface_v1;

namespace kelpa::view {

class LayerHost;

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

    /// From its making to its end a host is known here.
    void add(LayerHost& host) { hosts_.push_back(&host); }
    void remove(const LayerHost& host) { std::erase(hosts_, &host); }
    /// In which layer a host's surface belongs now.
    [[nodiscard]] std::uint32_t layerFor(WindowRole role) const;
    /// A cover has come or gone.
    void arrange();

  private:
    explicit LayerShell(zwlr_layer_shell_v1* shell) : shell_(shell) {}
    [[nodiscard]] bool movesSurfaces() const;

    zwlr_layer_shell_v1* shell_;
    std::vector<LayerHost*> hosts_;
};

/// What layers are made with, all of it the stage's.
struct LayerTools {
    LayerShell& shell;
    wayland::RelativePointer* pointer = nullptr; ///< null where the compositor has none
};

/// A window as a surface in a layer of the compositor: above everything, exactly where it belongs, and with
/// the keyboard to itself where that is its role. Qt paints it and hears its input; its place is told from
/// here.
class LayerHost final : public QObject, public WindowHost {
  public:
    /// The tools outlive the host.
    LayerHost(LayerTools tools, QQuickWindow& window, QQuickItem& content, WindowRole role);
    ~LayerHost() override;

    void setPlace(const QRect& place, const QString& connector) override;
    void prepare() override;
    void show() override;
    void hide() override;
    void setOpacity(double value) override;
    void setLeaving(bool leaving) override;
    /// The compositor gives it when the surface is clicked.
    void takeKeyboard() override { hover_ = Hover::Clicked; }
    void beginDrag(const QMouseEvent& event) override;
    void drag(const QMouseEvent& event) override;
    void endDrag() override;
    [[nodiscard]] QRect place() const override { return place_; }

    [[nodiscard]] bool covers() const { return role_ == WindowRole::Cover && surface_ != nullptr; }
    /// To the layer where it belongs now, if it is in another one.
    void changeLayer();

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    /// What the pointer does with a panel.
    enum class Hover { No, Moves, Clicked };

    void screensChanged();
    void showNow(QScreen& screen);
    void makeSurface(QScreen& screen);
    void destroySurface();
    void withdraw();
    void configured(std::uint32_t serial, QSize size);
    /// Tells the compositor what the surface is to be; it counts from the next commit.
    void describe();
    [[nodiscard]] std::uint32_t keyboard() const;
    void hear(const QEvent& event);
    void setHover(Hover hover);
    void letInputThrough(bool through);
    void commit();
    void moveTo(QPointF corner);

    LayerTools tools_;
    QQuickWindow& window_;
    QQuickItem& content_;
    WindowRole role_;
    QRect place_;
    QString connector_;
    QString shownOn_;
    zwlr_layer_surface_v1* surface_ = nullptr; ///< null while the window is not on its way to the screen
    std::uint32_t layer_ = 0;
    Hover hover_ = Hover::No;
    std::optional<QPointF> pointer_; ///< where it was over the panel
    std::optional<QPointF> held_;    ///< where a drag took hold of the window, while no distance was told
    std::optional<QPointF> carried_; ///< where that is now
    QPointF corner_;                 ///< where a drag takes the window, were there no edges of the screen
    bool wanted_ = false;            ///< shown, or to be shown as soon as its screen is there
    bool leaving_ = false;
};

} // namespace kelpa::view
