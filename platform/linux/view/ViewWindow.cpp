#include "platform/linux/view/ViewWindow.h"

#include "platform/linux/view/X11.h"

#include <QGuiApplication>
#include <QQmlComponent>
#include <QQmlEngine>
#include <QQuickItem>
#include <QScreen>
#include <stdexcept>

namespace kelpa {

ViewWindow::ViewWindow(QQmlEngine& engine, const QString& file)
    : fade_([this](double value) { applyOpacity(value); }) {
    makeContent(engine, file);
    connect(content_, SIGNAL(action(QString, QString)), this, SIGNAL(action(QString, QString)));
    connect(content_, SIGNAL(colorChanged()), this, SLOT(followBackground()));
    connect(this, &QQuickWindow::frameSwapped, this, &ViewWindow::fillEdges);
    watchScreens();
}

ViewWindow::~ViewWindow() = default;

void ViewWindow::makeContent(QQmlEngine& engine, const QString& file) {
    QQmlComponent component(&engine, QUrl(QStringLiteral("qrc:/Kelpa/") + file));
    content_ = qobject_cast<QQuickItem*>(component.create());
    if (content_ == nullptr)
        throw std::runtime_error(component.errorString().toStdString());
    content_->setParent(this);
    content_->setParentItem(contentItem());
    followBackground();
}

void ViewWindow::followBackground() {
    setColor(content_->property("color").value<QColor>());
    if (handle() != nullptr && x11::connection() != nullptr)
        x11::setBackground(static_cast<xcb_window_t>(winId()), color());
}

/// A screen that comes, goes or changes can move windows that have nothing to do with it.
void ViewWindow::watchScreens() {
    const auto watch = [this](const QScreen* screen) {
        connect(screen, &QScreen::geometryChanged, this, &ViewWindow::assertPlace, Qt::QueuedConnection);
    };
    for (const QScreen* screen : QGuiApplication::screens())
        watch(screen);
    connect(qApp, &QGuiApplication::screenAdded, this, watch);
    for (const auto signal : {&QGuiApplication::screenAdded, &QGuiApplication::screenRemoved,
                              &QGuiApplication::primaryScreenChanged})
        connect(qApp, signal, this, &ViewWindow::assertPlace, Qt::QueuedConnection);
}

QScreen* ViewWindow::targetScreen() const {
    for (QScreen* screen : QGuiApplication::screens())
        if (screen->name() == connector_)
            return screen;
    return QGuiApplication::primaryScreen();
}

void ViewWindow::setPlace(const QRect& pixels, const QString& connector) {
    pixels_ = pixels;
    connector_ = connector;
    assertPlace();
}

void ViewWindow::assertPlace() {
    QScreen* target = targetScreen();
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
void ViewWindow::fillEdges() {
    const double factor = devicePixelRatio();
    const int right = qFloor(qFloor(pixels_.width() / factor) * factor);
    const int bottom = qFloor(qFloor(pixels_.height() / factor) * factor);
    const auto window = static_cast<xcb_window_t>(winId());
    if (right < pixels_.width())
        x11::clear(window, QRect(right, 0, pixels_.width() - right, pixels_.height()));
    if (bottom < pixels_.height())
        x11::clear(window, QRect(0, bottom, pixels_.width(), pixels_.height() - bottom));
}

void ViewWindow::resizeEvent(QResizeEvent* event) {
    QQuickWindow::resizeEvent(event);
    content_->setSize(QSizeF(event->size()));
}

void ViewWindow::setContentProperty(const char* name, const QString& value) {
    content_->setProperty(name, value);
}

void ViewWindow::setAlpha(double alpha) {
    composited_ = x11::composited();
    fade_.set(alpha);
    settle();
}

void ViewWindow::fadeTo(double alpha, double seconds) {
    composited_ = x11::composited();
    fade_.run(alpha, seconds);
    settle();
}

/// What is fading out takes no more input, and where one sees through it one can also click through it.
void ViewWindow::settle() {
    const bool leaving = fade_.target() <= 0;
    content_->setEnabled(!leaving);
    setFlag(Qt::WindowTransparentForInput, leaving && composited_);
}

/// Without a compositor the window itself cannot be seen through: then its content comes out of the
/// background.
void ViewWindow::applyOpacity(double value) {
    setOpacity(composited_ ? value : 1.0);
    content_->setProperty("reveal", composited_ ? 1.0 : value);
}

void ViewWindow::warmUp() {
    if (warm_ || isVisible())
        return;
    warm_ = true;
    create();
    assertPlace();
    followBackground();
    grabWindow();
}

void ViewWindow::appear() {
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

void ViewWindow::disappear() {
    hide();
    left();
}

void ViewWindow::moveBy(QPoint distance) {
    const double factor = screen()->devicePixelRatio();
    pixels_.translate((QPointF(distance) * factor).toPoint());
    setPosition(position() + distance);
}

} // namespace kelpa
