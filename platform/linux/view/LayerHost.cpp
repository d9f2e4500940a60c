#include "platform/linux/view/LayerHost.h"

#include <QMouseEvent>
#include <QPlatformSurfaceEvent>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScreen>
#include <algorithm>
#include <layer-shell.h>
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

bool LayerShell::movesSurfaces() const {
    return zwlr_layer_shell_v1_get_version(shell_) >= ZWLR_LAYER_SURFACE_V1_SET_LAYER_SINCE_VERSION;
}

/// A panel belongs above bars, which are anywhere below the highest layer. Of two surfaces in one layer each
/// compositor has another one above, so that it leaves that layer to a cover.
std::uint32_t LayerShell::layerFor(WindowRole role) const {
    const bool covered =
        std::any_of(hosts_.begin(), hosts_.end(), [](const LayerHost* host) { return host->covers(); });
    const bool highest = role == WindowRole::Cover || (movesSurfaces() && !covered);
    return highest ? ZWLR_LAYER_SHELL_V1_LAYER_OVERLAY : ZWLR_LAYER_SHELL_V1_LAYER_TOP;
}

void LayerShell::arrange() {
    for (LayerHost* host : hosts_)
        host->changeLayer();
}

LayerHost::LayerHost(LayerTools tools, QQuickWindow& window, QQuickItem& content, WindowRole role)
    : tools_(tools), window_(window), content_(content), role_(role) {
    // The hint keeps Qt from making a window of the surface.
    window_.setFlags(Qt::Window | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
    // What is painted with alpha lets the desktop shine through.
    QSurfaceFormat format = window_.requestedFormat();
    format.setAlphaBufferSize(8);
    window_.setFormat(format);
    window_.setColor(Qt::transparent);
    window_.installEventFilter(this);
    tools_.shell.add(*this);
    // Which may be told after the place that belongs to it, and the margins are counted from the screen's
    // edges.
    watchScreens(*this, [this] { screensChanged(); });
}

LayerHost::~LayerHost() {
    withdraw();
    tools_.shell.remove(*this);
}

void LayerHost::setPlace(const QRect& place, const QString& connector) {
    place_ = place;
    connector_ = connector;
    if (!wanted_)
        return;
    if (surface_ == nullptr || connector_ != shownOn_)
        return screensChanged();
    describe();
    commit();
}

/// The window is where it should be, or goes there; without its screen it waits for that.
void LayerHost::screensChanged() {
    QScreen* screen = wanted_ ? screenOf(connector_) : nullptr;
    if (surface_ != nullptr && (screen == nullptr || shownOn_ != connector_))
        withdraw();
    if (surface_ == nullptr && screen != nullptr)
        return showNow(*screen);
    if (surface_ == nullptr)
        return;
    // When a surface that had the keyboard goes with its screen, one that says again that it wants it gets
    // it.
    describe();
    commit();
}

void LayerHost::prepare() {
    if (QScreen* screen = screenOf(connector_))
        window_.setScreen(screen);
    window_.resize(place_.size());
    window_.create();
}

void LayerHost::show() {
    wanted_ = true;
    screensChanged();
}

void LayerHost::hide() {
    wanted_ = false;
    withdraw();
}

void LayerHost::showNow(QScreen& screen) {
    prepare();
    makeSurface(screen);
    describe();
    commit();
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
    layer_ = tools_.shell.layerFor(role_);
    surface_ = tools_.shell.makeSurface(wayland::surface(window_), wayland::output(screen), layer_);
    zwlr_layer_surface_v1_add_listener(surface_, &listener, this);
    if (covers())
        tools_.shell.arrange();
}

void LayerHost::changeLayer() {
    const std::uint32_t layer = tools_.shell.layerFor(role_);
    if (surface_ == nullptr || layer == std::exchange(layer_, layer))
        return;
    zwlr_layer_surface_v1_set_layer(surface_, layer);
    commit();
}

void LayerHost::destroySurface() {
    if (surface_ == nullptr)
        return;
    zwlr_layer_surface_v1_destroy(std::exchange(surface_, nullptr));
    if (role_ == WindowRole::Cover)
        tools_.shell.arrange();
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

void LayerHost::setHover(Hover hover) {
    hover_ = hover;
    if (surface_ == nullptr)
        return;
    zwlr_layer_surface_v1_set_keyboard_interactivity(surface_, keyboard());
    commit();
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

void LayerHost::letInputThrough(bool through) {
    wl_region* nowhere = through ? wl_compositor_create_region(wayland::compositor()) : nullptr;
    wl_surface_set_input_region(wayland::surface(window_), nowhere);
    if (nowhere != nullptr)
        wl_region_destroy(nowhere);
}

void LayerHost::commit() {
    wl_surface_commit(wayland::surface(window_));
    wl_display_flush(wayland::display());
}

void LayerHost::setOpacity(double value) {
    content_.setOpacity(value);
}

void LayerHost::setLeaving(bool leaving) {
    if (leaving == std::exchange(leaving_, leaving) || surface_ == nullptr)
        return;
    zwlr_layer_surface_v1_set_keyboard_interactivity(surface_, keyboard());
    letInputThrough(leaving);
    commit();
}

/// Where the pointer is in a surface that moves under it, compositors tell each in a way of its own; how far
/// it went they tell alike, if they do.
void LayerHost::beginDrag(const QMouseEvent& event) {
    held_ = event.position();
    carried_.reset();
    corner_ = place_.topLeft();
    if (tools_.pointer == nullptr)
        return;
    tools_.pointer->follow([this](QPointF distance) {
        held_.reset();
        moveTo(corner_ + distance);
    });
}

/// Of a pointer that is put somewhere instead of being moved, as in a window of another desktop, Plasma tells
/// only where it is. So the surface stays until the end of the drag, and goes there at once.
void LayerHost::drag(const QMouseEvent& event) {
    if (held_)
        carried_ = event.position();
}

void LayerHost::endDrag() {
    if (role_ != WindowRole::Panel)
        return;
    if (tools_.pointer != nullptr)
        tools_.pointer->rest();
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
    commit();
}

} // namespace kelpa::view
