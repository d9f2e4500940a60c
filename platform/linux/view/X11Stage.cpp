#include "platform/linux/view/Keyboard.h"
#include "platform/linux/view/StackKeeper.h"
#include "platform/linux/view/Stage.h"
#include "platform/linux/view/X11.h"

#include <QCoreApplication>
#include <QExposeEvent>
#include <QMouseEvent>
#include <QQuickItem>
#include <QQuickWindow>
#include <QScreen>

namespace kelpa::view {

namespace {

using x11::idOf;

/// A window beyond the reach of the window manager: only so it stands above panels, on all workspaces, and
/// exactly where it belongs.
class X11Host final : public QObject, public WindowHost {
  public:
    X11Host(QQuickWindow& window, QQuickItem& content, WindowRole role);

    /// The server counts in pixels however large the desktop draws, so that a panel's size does not say yet
    /// how many it has there. It keeps its corner.
    void setPlace(const QRect& place, const QString& connector) override {
        const QScreen* screen = screenNear(connector);
        const bool drawn = role_ == WindowRole::Panel && screen != nullptr;
        size_ = place.size();
        pixels_.setSize((QSizeF(size_) * (drawn ? screen->devicePixelRatio() : 1)).toSize());
        pixels_.moveTopRight(place.topRight());
        connector_ = connector;
        assertPlace();
    }
    void prepare() override {
        window_.create();
        // It would fall on the next screen.
        if (role_ == WindowRole::Cover)
            x11::forbidShadow(idOf(window_));
        assertPlace();
        followBackground();
    }
    void show() override {
        if (!window_.isVisible()) {
            prepare();
            window_.show();
        }
        x11::raise(idOf(window_));
    }
    void hide() override {
        keysAtRest_.cancel();
        window_.hide();
    }
    void followBackground() override {
        window_.setColor(content_.property("color").value<QColor>());
        if (window_.handle() != nullptr)
            x11::setBackground(idOf(window_), window_.color());
    }
    void beginFade() override { composited_ = x11::composited(); }
    /// Without a compositor the window itself cannot be seen through: then its content comes out of the
    /// background.
    void setOpacity(double value) override {
        window_.setOpacity(composited_ ? value : 1.0);
        content_.setProperty("reveal", composited_ ? 1.0 : value);
    }
    /// Where one sees through it one can also click through it.
    void setLeaving(bool leaving) override {
        window_.setFlag(Qt::WindowTransparentForInput, leaving && composited_);
    }
    void takeKeyboard() override {
        keysAtRest_.cancel();
        if (window_.isVisible())
            x11::focus(idOf(window_));
    }
    void takeKeyboardInQuiet() override {
        keysAtRest_.whenReached([this] { takeKeyboard(); });
    }
    void beginDrag(const QMouseEvent& event) override {
        grip_ = event.globalPosition().toPoint() - window_.position();
    }
    void drag(const QMouseEvent& event) override {
        const QPoint distance = event.globalPosition().toPoint() - grip_ - window_.position();
        const double factor = window_.screen()->devicePixelRatio();
        pixels_.translate((QPointF(distance) * factor).toPoint());
        window_.setPosition(window_.position() + distance);
    }
    [[nodiscard]] QRect place() const override {
        QRect place(QPoint(), size_);
        place.moveTopRight(pixels_.topRight());
        return place;
    }

  private:
    /// Around what could be seen through no compositor draws a shadow, which would fall on the next screen.
    /// Nothing of it is.
    void allowAlpha() {
        QSurfaceFormat format = window_.requestedFormat();
        format.setAlphaBufferSize(8);
        window_.setFormat(format);
    }
    /// Asserts the place, because something else may have changed it.
    void assertPlace();
    void fillEdges();

    QQuickWindow& window_;
    QQuickItem& content_;
    WindowRole role_;
    KeysAtRest keysAtRest_;
    QSize size_; ///< as the program counts
    QRect pixels_;
    QString connector_;
    QPoint grip_;
    bool composited_ = false;
};

X11Host::X11Host(QQuickWindow& window, QQuickItem& content, WindowRole role)
    : window_(window), content_(content), role_(role) {
    window_.setFlags(Qt::Window | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
    if (role_ == WindowRole::Cover)
        allowAlpha();
    connect(&window_, &QQuickWindow::frameSwapped, this, &X11Host::fillEdges);
    // A screen that comes, goes or changes can move windows that have nothing to do with it.
    watchScreens(*this, [this] { assertPlace(); });
}

void X11Host::assertPlace() {
    QScreen* target = screenNear(connector_);
    if (pixels_.isEmpty() || target == nullptr)
        return;
    // Qt counts in its own units, of which a screen need not be a whole number; the server counts in pixels.
    const double factor = target->devicePixelRatio();
    const QPoint inScreen = pixels_.topLeft() - target->geometry().topLeft();
    const QRect place((QPointF(inScreen) / factor).toPoint() + target->geometry().topLeft(),
                      QSize(qCeil(pixels_.width() / factor), qCeil(pixels_.height() / factor)));
    if (window_.screen() != target)
        window_.setScreen(target);
    if (window_.geometry() != place)
        window_.setGeometry(place);
    if (window_.handle() != nullptr)
        x11::moveResize(idOf(window_), pixels_);
}

/// At a fractional scale what is painted can end a pixel short of the right and the lower edge, and be black
/// there.
void X11Host::fillEdges() {
    const double factor = window_.devicePixelRatio();
    const int right = qFloor(qFloor(pixels_.width() / factor) * factor);
    const int bottom = qFloor(qFloor(pixels_.height() / factor) * factor);
    if (right < pixels_.width())
        x11::clear(idOf(window_), QRect(right, 0, pixels_.width() - right, pixels_.height()));
    if (bottom < pixels_.height())
        x11::clear(idOf(window_), QRect(0, bottom, pixels_.width(), pixels_.height() - bottom));
}

/// An X server, where focus and place in the stack are ours to take and to defend.
class X11Stage final : public Stage {
  public:
    std::unique_ptr<WindowHost> makeHost(QQuickWindow& window, QQuickItem& content,
                                         WindowRole role) override {
        return std::make_unique<X11Host>(window, content, role);
    }
    void guardKeyboard(QQuickWindow* window) override { keyboard_.guard(window); }
    void focusGuarded() override { keyboard_.takeFocus(); }
    void keepOnTop(const std::vector<QQuickWindow*>& windows) override {
        std::vector<xcb_window_t> ids;
        for (const QQuickWindow* window : windows)
            ids.push_back(idOf(*window));
        stack_.keep(std::move(ids));
    }
    void fillBackground(QQuickWindow& window) override {
        if (window.handle() != nullptr)
            x11::setBackground(idOf(window), window.color());
    }
    void askToFloat(QQuickWindow& window) override {
        if (window.type() != Qt::Dialog)
            x11::addType(idOf(window), "_NET_WM_WINDOW_TYPE_DIALOG");
    }
    void showAgain(QQuickWindow& window) override {
        QExposeEvent all(QRect(QPoint(), window.size()));
        QCoreApplication::sendEvent(&window, &all);
    }
    void activate(QQuickWindow& window) override { x11::activate(idOf(window)); }
    [[nodiscard]] int heightLeftByBars(int available) const override { return available; }
    [[nodiscard]] bool windowsDrawFrames() const override { return false; }
    /// The server tells the program itself.
    [[nodiscard]] bool inputIsOurs() const override { return false; }

  private:
    KeyboardGuard keyboard_;
    StackKeeper stack_;
};

} // namespace

std::unique_ptr<Stage> makeX11Stage() {
    return std::make_unique<X11Stage>();
}

} // namespace kelpa::view
