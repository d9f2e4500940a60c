#include "platform/linux/view/PlacedWindow.h"

#include "platform/linux/view/X11.h"

#include <QGuiApplication>
#include <QQuickItem>
#include <QScreen>

namespace kelpa {

PlacedWindow::PlacedWindow(QQmlEngine& engine, const QString& file)
    : ViewWindow(engine, file), fade_([this](double value) { applyOpacity(value); }) {
    setFlags(Qt::Window | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint);
    connect(this, &QQuickWindow::frameSwapped, this, &PlacedWindow::fillEdges);
    watchScreens();
}

PlacedWindow::~PlacedWindow() = default;

/// A screen that comes, goes or changes can move windows that have nothing to do with it.
void PlacedWindow::watchScreens() {
    const auto watch = [this](const QScreen* screen) {
        connect(screen, &QScreen::geometryChanged, this, &PlacedWindow::assertPlace, Qt::QueuedConnection);
    };
    for (const QScreen* screen : QGuiApplication::screens())
        watch(screen);
    connect(qApp, &QGuiApplication::screenAdded, this, watch);
    for (const auto signal : {&QGuiApplication::screenAdded, &QGuiApplication::screenRemoved,
                              &QGuiApplication::primaryScreenChanged})
        connect(qApp, signal, this, &PlacedWindow::assertPlace, Qt::QueuedConnection);
}

void PlacedWindow::setPlace(const QRect& pixels, const QString& connector) {
    pixels_ = pixels;
    connector_ = connector;
    assertPlace();
}

void PlacedWindow::assertPlace() {
    QScreen* target = screenOf(connector_);
    if (pixels_.isEmpty() || target == nullptr)
        return;
    // Qt counts in its own units, of which a screen need not be a whole number; the server counts in pixels.
    const double factor = target->devicePixelRatio();
    const QPoint inScreen = pixels_.topLeft() - target->geometry().topLeft();
    const QRect place((QPointF(inScreen) / factor).toPoint() + target->geometry().topLeft(),
                      QSize(qCeil(pixels_.width() / factor), qCeil(pixels_.height() / factor)));
    if (screen() != target)
        setScreen(target);
    if (geometry() != place)
        setGeometry(place);
    if (handle() != nullptr && x11::connection() != nullptr)
        x11::moveResize(static_cast<xcb_window_t>(winId()), pixels_);
}

/// At a fractional scale what is painted can end a pixel short of the right and the lower edge, and be black
/// there.
void PlacedWindow::fillEdges() {
    const double factor = devicePixelRatio();
    const int right = qFloor(qFloor(pixels_.width() / factor) * factor);
    const int bottom = qFloor(qFloor(pixels_.height() / factor) * factor);
    const auto window = static_cast<xcb_window_t>(winId());
    if (right < pixels_.width())
        x11::clear(window, QRect(right, 0, pixels_.width() - right, pixels_.height()));
    if (bottom < pixels_.height())
        x11::clear(window, QRect(0, bottom, pixels_.width(), pixels_.height() - bottom));
}

void PlacedWindow::setAlpha(double alpha) {
    composited_ = x11::composited();
    fade_.set(alpha);
    settle();
}

void PlacedWindow::fadeTo(double alpha, double seconds) {
    composited_ = x11::composited();
    fade_.run(alpha, seconds);
    settle();
}

/// What is fading out takes no more input, and where one sees through it one can also click through it.
void PlacedWindow::settle() {
    const bool leaving = fade_.target() <= 0;
    content().setEnabled(!leaving);
    setFlag(Qt::WindowTransparentForInput, leaving && composited_);
}

/// Without a compositor the window itself cannot be seen through: then its content comes out of the
/// background.
void PlacedWindow::applyOpacity(double value) {
    setOpacity(composited_ ? value : 1.0);
    content().setProperty("reveal", composited_ ? 1.0 : value);
}

void PlacedWindow::warmUp() {
    if (warm_ || isVisible())
        return;
    warm_ = true;
    create();
    assertPlace();
    followBackground();
    grabWindow();
}

void PlacedWindow::appear() {
    if (!isVisible()) {
        create();
        assertPlace();
        followBackground();
        show();
    }
    if (x11::connection() != nullptr)
        x11::raise(static_cast<xcb_window_t>(winId()));
    appeared();
}

void PlacedWindow::disappear() {
    hide();
    left();
}

void PlacedWindow::moveBy(QPoint distance) {
    const double factor = screen()->devicePixelRatio();
    pixels_.translate((QPointF(distance) * factor).toPoint());
    setPosition(position() + distance);
}

} // namespace kelpa
