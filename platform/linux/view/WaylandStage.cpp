#include "platform/linux/view/Stage.h"
#include "platform/linux/view/WaylandNative.h"

#include <QQuickItem>
#include <QQuickWindow>
#include <QScreen>

namespace kelpa::view {

namespace {

/// An ordinary window of a Wayland session whose compositor offers nothing better: full screen on its output,
/// or a panel wherever the compositor puts it.
class ToplevelHost final : public QObject, public WindowHost {
  public:
    ToplevelHost(QQuickWindow& window, QQuickItem& content, WindowRole role);

    void setPlace(const QRect& place, const QString& connector) override {
        const bool moved = connector != connector_;
        place_ = place;
        connector_ = connector;
        if (moved)
            screensChanged();
    }
    void prepare() override;
    void show() override {
        wanted_ = true;
        screensChanged();
    }
    void hide() override {
        wanted_ = false;
        window_.hide();
    }
    void followBackground() override { window_.setColor(content_.property("color").value<QColor>()); }
    /// Behind a full-screen window the compositor shows nothing, and a window's opacity cannot be changed:
    /// the content comes out of the background.
    void setOpacity(double value) override { content_.setProperty("reveal", value); }
    void beginDrag(const QMouseEvent& /*event*/) override { window_.startSystemMove(); }
    [[nodiscard]] QRect place() const override { return place_; }

  private:
    /// A panel shows on any screen rather than not at all.
    [[nodiscard]] QScreen* targetScreen() const {
        return role_ == WindowRole::Panel ? screenNear(connector_) : screenOf(connector_);
    }
    void screensChanged();

    QQuickWindow& window_;
    QQuickItem& content_;
    WindowRole role_;
    QRect place_;
    QString connector_;
    bool wanted_ = false; ///< shown, or to be shown as soon as its screen is there
};

ToplevelHost::ToplevelHost(QQuickWindow& window, QQuickItem& content, WindowRole role)
    : window_(window), content_(content), role_(role) {
    window_.setFlags(Qt::Window | Qt::FramelessWindowHint);
    watchScreens(*this, [this] { screensChanged(); });
}

void ToplevelHost::screensChanged() {
    QScreen* screen = wanted_ ? targetScreen() : nullptr;
    if (screen == nullptr || (window_.isVisible() && window_.screen() != screen))
        window_.hide();
    if (screen == nullptr || window_.isVisible())
        return;
    prepare();
    if (role_ == WindowRole::Cover)
        window_.showFullScreen();
    else
        window_.show();
}

void ToplevelHost::prepare() {
    if (QScreen* screen = targetScreen())
        window_.setScreen(screen);
    // A window of one possible size floats also where the others are tiled.
    if (role_ == WindowRole::Panel) {
        window_.setMinimumSize(place_.size());
        window_.setMaximumSize(place_.size());
    }
    window_.resize(place_.size());
    window_.create();
    followBackground();
}

/// A Wayland compositor. It gives the keyboard to the surfaces that say they want it, and keeps layers in
/// order.
class WaylandStage final : public Stage {
  public:
    std::unique_ptr<WindowHost> makeHost(QQuickWindow& window, QQuickItem& content,
                                         WindowRole role) override {
        if (layers_)
            return layers_(window, content, role);
        return std::make_unique<ToplevelHost>(window, content, role);
    }
    void askToFloat(QQuickWindow& window) override;
    void activate(QQuickWindow& window) override { window.requestActivate(); }
    /// A compositor tells nobody how much its own bars take.
    [[nodiscard]] int heightLeftByBars(int available) const override {
        constexpr int desktopsBar = 48;
        return available - desktopsBar;
    }
    /// GNOME's compositor is one that wants every window to draw its own. The toolkit would draw some, but
    /// only together with OpenGL, which takes more memory than everything else in this process.
    [[nodiscard]] bool windowsDrawFrames() const override {
        static const bool left = !wayland::offers("zxdg_decoration_manager_v1");
        return left;
    }
    [[nodiscard]] bool inputIsOurs() const override { return true; }

  private:
    /// Nothing where the compositor has no layers.
    HostMaker layers_ = qgetenv("KELPA_LAYER_SHELL") != "no" ? findLayers() : HostMaker();
};

/// Compositors that tile let windows of one possible size float, and look for that when a window comes. Those
/// that have layers are such, but for Plasma's.
void WaylandStage::askToFloat(QQuickWindow& window) {
    const QSize least = window.minimumSize();
    const QSize most = window.maximumSize();
    if (!layers_ || least == most || qgetenv("XDG_CURRENT_DESKTOP") == "KDE")
        return;
    window.setMinimumSize(window.size());
    window.setMaximumSize(window.size());
    const auto allow = [&window, least, most] {
        window.setMinimumSize(least);
        window.setMaximumSize(most);
    };
    QObject::connect(&window, &QQuickWindow::frameSwapped, &window, allow,
                     static_cast<Qt::ConnectionType>(Qt::QueuedConnection | Qt::SingleShotConnection));
}

} // namespace

std::unique_ptr<Stage> makeWaylandStage() {
    return std::make_unique<WaylandStage>();
}

} // namespace kelpa::view
