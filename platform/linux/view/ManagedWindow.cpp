#include "platform/linux/view/ManagedWindow.h"

#include "platform/linux/helper/ViewProtocol.h"
#include "platform/linux/view/X11.h"

#include <QGuiApplication>
#include <QIcon>
#include <QQuickItem>
#include <QScreen>
#include <QStringList>

namespace kelpa::view {

namespace {

QString inWords(const QRect& rect) {
    return QStringLiteral("%1 %2 %3 %4").arg(rect.x()).arg(rect.y()).arg(rect.width()).arg(rect.height());
}

/// Null for anything that is no rectangle.
QRect fromWords(const QString& words) {
    const QStringList parts = words.split(QLatin1Char(' '));
    if (parts.size() != 4)
        return {};
    return {parts[0].toInt(), parts[1].toInt(), parts[2].toInt(), parts[3].toInt()};
}

/// In the sizes that task bars and window switchers show.
QIcon applicationIcon() {
    const QPixmap picture(QStringLiteral(":/pictures/app.orvane.Kelpa.png"));
    QIcon icon;
    for (const int size : {32, 64, 128})
        icon.addPixmap(picture.scaled(size, size, Qt::KeepAspectRatio, Qt::SmoothTransformation));
    return icon;
}

/// Enough of the window's upper edge to take hold of it.
bool reachable(const QRect& bounds) {
    const QRect handle(bounds.center().x() - 20, bounds.y(), 40, 20);
    for (const QScreen* screen : QGuiApplication::screens())
        if (screen->availableGeometry().contains(handle))
            return true;
    return false;
}

} // namespace

ManagedWindow::ManagedWindow(QQmlEngine& engine, const QString& file)
    : ViewWindow(engine, file), frame_(WindowFrame::where(engine, *this)) {
    setIcon(applicationIcon());
}

void ManagedWindow::setPlace(const QRect& /*pixels*/, const QString& connector) {
    connector_ = connector;
}

void ManagedWindow::setContentProperty(const QByteArray& name, const QString& value) {
    if (name == wire::view::bounds.data())
        bounds_ = fromWords(value);
    else
        ViewWindow::setContentProperty(name, value);
}

/// On a small screen. What is higher than what bars and the title leave of it, desktops put under a bar, with
/// its title above the upper edge, or on another screen.
QSize ManagedWindow::firstSizeIn(QSize room) const {
    constexpr int titleBar = 40, desktopsBar = 48;
    if (!frame_)
        room.rheight() -= titleBar;
    // A compositor tells nobody how much its own bars take.
    if (x11::connection() == nullptr)
        room.rheight() -= desktopsBar;
    return around(firstSize()).boundedTo(room);
}

QRect ManagedWindow::firstPlace() const {
    const QScreen* target = screenOf(connector_);
    const QRect room = target != nullptr ? target->availableGeometry() : QRect();
    const QSize size =
        bounds_.isValid() ? around(bounds_.size()).boundedTo(room.size()) : firstSizeIn(room.size());
    QRect place(QPoint(), size);
    place.moveCenter(room.center());
    return place;
}

void ManagedWindow::appear() {
    if (isVisible())
        return takeKeyboard();
    const QRect place = firstPlace();
    setGeometry(place);
    if (reachable(bounds_))
        setFramePosition(bounds_.topLeft());
    create();
    followBackground();
    show();
}

void ManagedWindow::takeKeyboard() {
    if (x11::connection() != nullptr)
        x11::activate(static_cast<xcb_window_t>(winId()));
    else
        requestActivate();
}

QSize ManagedWindow::around(const QSize& content) const {
    return frame_ ? frame_->around(content) : content;
}

void ManagedWindow::resizeEvent(QResizeEvent* event) {
    ViewWindow::resizeEvent(event);
    if (frame_)
        frame_->layOut(content(), event->size());
}

void ManagedWindow::closeEvent(QCloseEvent* event) {
    // What is being typed counts as entered.
    contentItem()->forceActiveFocus();
    const QString bounds = inWords(QRect(framePosition(), frame_ ? frame_->within(size()) : size()));
    ViewWindow::closeEvent(event);
    emit action(QString::fromUtf8(wire::view::closedAction.data()), bounds);
}

} // namespace kelpa::view
