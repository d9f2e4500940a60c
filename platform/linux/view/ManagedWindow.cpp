#include "platform/linux/view/ManagedWindow.h"

#include "platform/linux/helper/ViewProtocol.h"

#include <QGuiApplication>
#include <QIcon>
#include <QScreen>
#include <QShortcut>

namespace kelpa::view {

namespace {

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

ManagedWindow::ManagedWindow(Stage& stage, QQmlEngine& engine, const QString& file)
    : ViewWindow(engine, file), stage_(stage) {
    if (stage.windowsDrawFrames()) {
        frame_ = makeItem(engine, QStringLiteral("WindowFrame.qml"));
        titleHeight_ = frame_->property("titleHeight").toInt();
    }
    setIcon(applicationIcon());
    closeBy(QStringLiteral("Ctrl+W"));
}

/// A page's own would not be heard while something that popped up is open.
void ManagedWindow::closeBy(const QString& keys) {
    connect(new QShortcut(QKeySequence(keys), this), &QShortcut::activated, this, &QWindow::close);
}

void ManagedWindow::setPlace(const QRect& bounds, const QString& connector) {
    bounds_ = bounds;
    connector_ = connector;
}

/// On a small screen. What is higher than what bars and the title leave of it, desktops put under a bar, with
/// its title above the upper edge, or on another screen.
QSize ManagedWindow::firstSizeIn(QSize room) const {
    constexpr int titleBar = 40;
    if (!frame_)
        room.rheight() -= titleBar;
    room.setHeight(stage_.heightLeftByBars(room.height()));
    return around(firstSize()).boundedTo(room);
}

QRect ManagedWindow::firstPlace() const {
    const QScreen* target = screenNear(connector_);
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
    stage_.askToFloat(*this);
    followBackground();
    fresh_ = true;
    show();
}

void ManagedWindow::followBackground() {
    ViewWindow::followBackground();
    stage_.fillBackground(*this);
}

void ManagedWindow::resizeEvent(QResizeEvent* event) {
    ViewWindow::resizeEvent(event);
    content().setY(titleHeight_);
    content().setHeight(event->size().height() - titleHeight_);
}

/// Where the X server itself composites, as awesome has it do, it can lose what is painted while the window
/// is put into its frame, be it moved by that or not.
void ManagedWindow::rest() {
    if (fresh_)
        framed_.start();
}

void ManagedWindow::exposeEvent(QExposeEvent* event) {
    ViewWindow::exposeEvent(event);
    rest();
}

void ManagedWindow::moveEvent(QMoveEvent* event) {
    ViewWindow::moveEvent(event);
    rest();
}

void ManagedWindow::closeEvent(QCloseEvent* event) {
    // What is being typed counts as entered.
    contentItem()->forceActiveFocus();
    const QRect bounds(framePosition(), size() - QSize(0, titleHeight_));
    ViewWindow::closeEvent(event);
    const auto text = [](int number) { return std::to_string(number); };
    say(wire::view::closed, text(bounds.x()), text(bounds.y()), text(bounds.width()), text(bounds.height()));
}

} // namespace kelpa::view
