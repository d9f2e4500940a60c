#include "platform/linux/view/Stage.h"
#include "platform/linux/view/WaylandNative.h"

#include <QMouseEvent>
#include <QPlatformSurfaceEvent>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScreen>
#include <algorithm>
#include <layer-shell.h>
#include <optional>
#include <utility>
#include <wayland-client.h>

namespace kelpa::view {

namespace {

constexpr std::uint32_t knownVersion = 4;
/// By which compositors' settings can tell these surfaces from others.
constexpr const char* purpose = "kelpa";

constexpr std::uint32_t allEdges = ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_BOTTOM |
                                   ZWLR_LAYER_SURFACE_V1_ANCHOR_LEFT | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT;
constexpr std::uint32_t topRight = ZWLR_LAYER_SURFACE_V1_ANCHOR_TOP | ZWLR_LAYER_SURFACE_V1_ANCHOR_RIGHT;
/// Makes the surface neither push panels aside nor make room for them.
constexpr std::int32_t overPanels = -1;

/// What a compositor offers for panels, screen covers and the like: surfaces above all windows that stand
/// where they are told to.
class LayerShell : public QObject {
    Q_OBJECT

  public:
    explicit LayerShell(zwlr_layer_shell_v1* shell) : shell_(shell) {}
    ~LayerShell() override {
        if (zwlr_layer_shell_v1_get_version(shell_) >= ZWLR_LAYER_SHELL_V1_DESTROY_SINCE_VERSION)
            zwlr_layer_shell_v1_destroy(shell_);
        else
            wl_proxy_destroy(reinterpret_cast<wl_proxy*>(shell_));
    }

    /// Gives the surface, which has no role yet and nothing on it, its place in a layer. The caller destroys
    /// what it gets, before the surface.
    [[nodiscard]] zwlr_layer_surface_v1* makeSurface(wl_surface* surface, wl_output* output,
                                                     std::uint32_t layer) {
        return zwlr_layer_shell_v1_get_layer_surface(shell_, surface, output, layer, purpose);
    }
    /// In which layer a surface belongs now. A panel's is above bars, which are anywhere below the highest
    /// layer. Of two surfaces in one layer each compositor has another one above, so that it leaves that
    /// layer to a cover.
    [[nodiscard]] std::uint32_t layerFor(WindowRole role) const {
        const bool highest = role == WindowRole::Cover || (movesSurfaces() && covers_ == 0);
        return highest ? ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY : ZWLR_LAYER_SHELL_V1_LAYER_TOP;
    }
    /// So many covers have come, or gone where it is below 0.
    void countCovers(int come) {
        covers_ += come;
        emit arranged();
    }
    /// Null where the compositor tells only where the pointer is.
    [[nodiscard]] wayland::RelativePointer* pointer() { return pointer_.get(); }

  signals:
    void arranged();

  private:
    [[nodiscard]] bool movesSurfaces() const {
        return zwlr_layer_shell_v1_get_version(shell_) >= ZWLR_LAYER_SURFACE_V1_SET_LAYER_SINCE_VERSION;
    }

    zwlr_layer_shell_v1* shell_;
    std::unique_ptr<wayland::RelativePointer> pointer_ = wayland::RelativePointer::find();
    int covers_ = 0;
};

/// A window as a surface in a layer of the compositor: above everything, exactly where it belongs, and with
/// the keyboard to itself where that is its role. Qt paints it and hears its input; its place is told from
/// here.
class LayerHost final : public QObject, public WindowHost {
  public:
    LayerHost(std::shared_ptr<LayerShell> shell, QQuickWindow& window, QQuickItem& content, WindowRole role);
    ~LayerHost() override { withdraw(); }

    void setPlace(const QRect& place, const QString& connector) override {
        place_ = place;
        connector_ = connector;
        screensChanged();
    }
    void prepare() override {
        if (QScreen* screen = screenOf(connector_))
            window_.setScreen(screen);
        window_.resize(place_.size());
        window_.create();
    }
    void show() override {
        wanted_ = true;
        screensChanged();
    }
    void hide() override {
        wanted_ = false;
        withdraw();
    }
    void setOpacity(double value) override { content_.setOpacity(value); }
    void setLeaving(bool leaving) override {
        if (leaving == std::exchange(leaving_, leaving) || surface_ == nullptr)
            return;
        zwlr_layer_surface_v1_set_keyboard_interactivity(surface_, keyboard());
        letInputThrough(leaving);
        commit();
    }
    /// The compositor gives it when the surface is clicked.
    void takeKeyboard() override { hover_ = Hover::Clicked; }
    void beginDrag(const QMouseEvent& event) override;
    /// Of a pointer that is put somewhere instead of being moved, as in a window of another desktop, Plasma
    /// tells only where it is. So the surface stays until the end of the drag, and goes there at once.
    void drag(const QMouseEvent& event) override {
        if (held_)
            carried_ = event.position();
    }
    void endDrag() override;
    [[nodiscard]] QRect place() const override { return place_; }

    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    /// What the pointer does with a panel.
    enum class Hover { No, Moves, Clicked };

    void screensChanged();
    void makeSurface(QScreen& screen);
    void destroySurface() {
        if (surface_ == nullptr)
            return;
        zwlr_layer_surface_v1_destroy(std::exchange(surface_, nullptr));
        if (role_ == WindowRole::Cover)
            shell_->countCovers(-1);
    }
    /// To the layer where it belongs now, if it is in another one.
    void changeLayer() {
        const std::uint32_t layer = shell_->layerFor(role_);
        if (surface_ == nullptr || layer == std::exchange(layer_, layer))
            return;
        zwlr_layer_surface_v1_set_layer(surface_, layer);
        commit();
    }
    void withdraw();
    void configured(std::uint32_t serial, QSize size);
    /// Tells the compositor what the surface is to be.
    void describe();
    [[nodiscard]] std::uint32_t keyboard() const;
    void hear(const QEvent& event);
    void setHover(Hover hover) {
        hover_ = hover;
        if (surface_ == nullptr)
            return;
        zwlr_layer_surface_v1_set_keyboard_interactivity(surface_, keyboard());
        commit();
    }
    void letInputThrough(bool through) {
        wl_region* nowhere = through ? wl_compositor_create_region(wayland::compositor()) : nullptr;
        wl_surface_set_input_region(wayland::surface(window_), nowhere);
        if (nowhere != nullptr)
            wl_region_destroy(nowhere);
    }
    void commit() {
        wl_surface_commit(wayland::surface(window_));
        wl_display_flush(wayland::display());
    }
    void moveTo(QPointF corner);

    std::shared_ptr<LayerShell> shell_;
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

LayerHost::LayerHost(std::shared_ptr<LayerShell> shell, QQuickWindow& window, QQuickItem& content,
                     WindowRole role)
    : shell_(std::move(shell)), window_(window), content_(content), role_(role) {
    // The hint keeps Qt from making a window of the surface.
    window_.setFlags(Qt::Window | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
    // What is painted with alpha lets the desktop shine through.
    QSurfaceFormat format = window_.requestedFormat();
    format.setAlphaBufferSize(8);
    window_.setFormat(format);
    window_.setColor(Qt::transparent);
    window_.installEventFilter(this);
    connect(shell_.get(), &LayerShell::arranged, this, &LayerHost::changeLayer);
    // Which may be told after the place that belongs to it, and the margins are counted from the screen's
    // edges.
    watchScreens(*this, [this] { screensChanged(); });
}

/// The window is where it should be, or goes there; without its screen it waits for that.
void LayerHost::screensChanged() {
    QScreen* screen = wanted_ ? screenOf(connector_) : nullptr;
    if (surface_ != nullptr && (screen == nullptr || shownOn_ != connector_))
        withdraw();
    if (surface_ == nullptr && screen != nullptr) {
        prepare();
        makeSurface(*screen);
    }
    // When a surface that had the keyboard goes with its screen, one that says again that it wants it gets
    // it.
    if (surface_ != nullptr)
        describe();
}

void LayerHost::makeSurface(QScreen& screen) {
    static constexpr zwlr_layer_surface_v1_listener listener{
        [](void* data, zwlr_layer_surface_v1*, std::uint32_t serial, std::uint32_t width,
           std::uint32_t height) {
            static_cast<LayerHost*>(data)->configured(
                serial, QSize(static_cast<int>(width), static_cast<int>(height)));
        },
        [](void* data, zwlr_layer_surface_v1*) { static_cast<LayerHost*>(data)->withdraw(); }};
    shownOn_ = connector_;
    layer_ = shell_->layerFor(role_);
    surface_ = shell_->makeSurface(wayland::surface(window_), wayland::output(screen), layer_);
    zwlr_layer_surface_v1_add_listener(surface_, &listener, this);
    if (role_ == WindowRole::Cover)
        shell_->countCovers(1);
}

/// The surface loses its role before Qt destroys it; the next one is made from scratch.
void LayerHost::withdraw() {
    held_.reset();
    endDrag();
    hover_ = Hover::No;
    pointer_.reset();
    destroySurface();
    shownOn_.clear();
    window_.hide();
    window_.destroy();
}

bool LayerHost::eventFilter(QObject* watched, QEvent* event) {
    if (event->type() == QEvent::PlatformSurface &&
        static_cast<QPlatformSurfaceEvent*>(event)->surfaceEventType() ==
            QPlatformSurfaceEvent::SurfaceAboutToBeDestroyed)
        destroySurface();
    if (role_ == WindowRole::Panel)
        hear(*event);
    return QObject::eventFilter(watched, event);
}

/// Some compositors give the keyboard to whoever says that it may have it, asked or not. So the panel says
/// that only to somebody who comes to it with the mouse, and not to a mouse that it came under.
void LayerHost::hear(const QEvent& event) {
    if (event.type() == QEvent::MouseMove) {
        const QPointF place = static_cast<const QMouseEvent&>(event).position();
        if (pointer_ && *pointer_ != place && hover_ == Hover::No)
            setHover(Hover::Moves);
        pointer_ = place;
    } else if (event.type() == QEvent::Leave) {
        pointer_.reset();
        if (hover_ == Hover::Moves)
            setHover(Hover::No);
    }
}

void LayerHost::configured(std::uint32_t serial, QSize size) {
    zwlr_layer_surface_v1_ack_configure(surface_, serial);
    // A side that the compositor leaves to us is 0.
    window_.resize(size.width() > 0 ? size.width() : place_.width(),
                   size.height() > 0 ? size.height() : place_.height());
    if (window_.isVisible())
        return commit();
    window_.show();
    letInputThrough(leaving_);
}

void LayerHost::describe() {
    const bool covers = role_ == WindowRole::Cover;
    const QRect screen = window_.screen()->geometry();
    const auto width = static_cast<std::uint32_t>(covers ? 0 : place_.width());
    const auto height = static_cast<std::uint32_t>(covers ? 0 : place_.height());
    zwlr_layer_surface_v1_set_size(surface_, width, height);
    zwlr_layer_surface_v1_set_anchor(surface_, covers ? allEdges : topRight);
    zwlr_layer_surface_v1_set_exclusive_zone(surface_, overPanels);
    if (!covers)
        zwlr_layer_surface_v1_set_margin(surface_, place_.top() - screen.top(),
                                         screen.right() - place_.right(), 0, 0);
    zwlr_layer_surface_v1_set_keyboard_interactivity(surface_, keyboard());
    commit();
}

std::uint32_t LayerHost::keyboard() const {
    if (leaving_)
        return ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_NONE;
    if (role_ == WindowRole::Cover)
        return ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_EXCLUSIVE;
    // Before this there was only all or nothing, and a panel that nobody asked for must not take all.
    const auto version = zwlr_layer_surface_v1_get_version(surface_);
    return hover_ != Hover::No &&
                   version >= ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_ON_DEMAND_SINCE_VERSION
               ? ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_ON_DEMAND
               : ZWLR_LAYER_SURFACE_V1_KEYBOARD_INTERACTIVITY_NONE;
}

/// Where the pointer is in a surface that moves under it, compositors tell each in a way of its own; how far
/// it went they tell alike, if they do.
void LayerHost::beginDrag(const QMouseEvent& event) {
    held_ = event.position();
    carried_.reset();
    corner_ = place_.topLeft();
    if (auto* pointer = shell_->pointer())
        pointer->follow([this](QPointF distance) {
            held_.reset();
            moveTo(corner_ + distance);
        });
}

void LayerHost::endDrag() {
    if (role_ != WindowRole::Panel)
        return;
    if (auto* pointer = shell_->pointer())
        pointer->rest();
    if (held_ && carried_)
        moveTo(corner_ + *carried_ - *held_);
    held_.reset();
}

void LayerHost::moveTo(QPointF corner) {
    corner_ = corner;
    const QRect screen = window_.screen()->geometry();
    const QPoint least = screen.topLeft();
    const QPoint most = screen.bottomRight() - place_.bottomRight() + place_.topLeft();
    const QPoint reached(std::clamp(qRound(corner.x()), least.x(), std::max(least.x(), most.x())),
                         std::clamp(qRound(corner.y()), least.y(), std::max(least.y(), most.y())));
    if (surface_ == nullptr || reached == place_.topLeft())
        return;
    place_.moveTopLeft(reached);
    describe();
}

} // namespace

HostMaker findLayers() {
    auto* shell =
        static_cast<zwlr_layer_shell_v1*>(wayland::bind(zwlr_layer_shell_v1_interface, knownVersion));
    if (shell == nullptr)
        return {};
    return [owned = std::make_shared<LayerShell>(shell)](QQuickWindow& window, QQuickItem& content,
                                                         WindowRole role) {
        return std::make_unique<LayerHost>(owned, window, content, role);
    };
}

} // namespace kelpa::view

#include "LayerHost.moc"
