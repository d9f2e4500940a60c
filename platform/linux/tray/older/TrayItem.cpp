#include "platform/linux/tray/older/TrayItem.h"

#include "platform/linux/helper/TrayProtocol.h"

#include <QCursor>
#include <QFile>
#include <QGuiApplication>
#include <QScreen>
#include <QTimer>
#include <QtEndian>
#include <chrono>

namespace kelpa {

namespace tray = wire::tray;

namespace {

/// Large enough for any tray, and scaled down for the others.
constexpr int pictureSide = 48;

/// A picture of that name from the program's data: raw pixels of four bytes, alpha first.
QImage load(const QString& data, const QString& name) {
    QFile file(QStringLiteral("%1/pixmaps/%2-%3.argb").arg(data, name).arg(pictureSide));
    const QByteArray bytes = file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
    QImage image(pictureSide, pictureSide, QImage::Format_ARGB32);
    if (bytes.size() != image.sizeInBytes())
        return {};
    qFromBigEndian<quint32>(bytes.constData(), pictureSide * pictureSide, image.bits());
    return image;
}

using namespace std::chrono_literals;
/// A person may keep the button down for as long as that, in all.
constexpr auto triesInterval = 20ms;
constexpr int mostTries = 50;

/// A menu that cannot have the pointer for itself hears of no click beside it, and stays open.
bool pointerIsFree() {
    const auto cookie =
        xcb_grab_pointer(x11::connection(), 0, x11::root(), 0, XCB_GRAB_MODE_ASYNC, XCB_GRAB_MODE_ASYNC,
                         XCB_WINDOW_NONE, XCB_CURSOR_NONE, XCB_CURRENT_TIME);
    const X11Reply<xcb_grab_pointer_reply_t> reply(
        xcb_grab_pointer_reply(x11::connection(), cookie, nullptr));
    xcb_ungrab_pointer(x11::connection(), XCB_CURRENT_TIME);
    return reply && reply->status == XCB_GRAB_STATUS_SUCCESS;
}

} // namespace

TrayMenu::TrayMenu() {
    connect(&menu_, &QMenu::aboutToHide, this, &TrayMenu::closed, Qt::QueuedConnection);
}

void TrayMenu::fill(QAction& action, const wire::Message& message, std::size_t first) {
    const QString title = QString::fromStdString(message.field(first + 3));
    const QString image = QString::fromStdString(message.field(first + 4));
    const QString key = QString::fromStdString(message.field(first + 5));
    action.setSeparator(message.field(first + 1) == "1");
    action.setEnabled(message.field(first + 2) == "1");
    action.setText(QString(title).replace(QLatin1Char('&'), QLatin1String("&&")));
    action.setIcon(image.isEmpty() ? QIcon()
                                   : QIcon(symbols_ + QLatin1Char('/') + image + QLatin1String(".png")));
    action.setIconVisibleInMenu(true);
    action.setShortcut(key.isEmpty() ? QKeySequence() : QKeySequence(QLatin1String("Ctrl+") + key.toUpper()));
    action.setShortcutVisibleInContextMenu(true);
}

void TrayMenu::insert(const wire::Message& message) {
    const auto id = message.number(2);
    if (!id || lines_.count(*id) != 0)
        return;
    auto* action = new QAction(&menu_);
    fill(*action, message, 2);
    connect(action, &QAction::triggered, this, [this, line = *id] { emit clicked(line); });
    menu_.insertAction(menu_.actions().value(message.number(1).value_or(-1)), action);
    lines_.emplace(*id, action);
}

void TrayMenu::change(const wire::Message& message) {
    const auto line = lines_.find(message.number(1).value_or(0));
    if (line != lines_.end())
        fill(*line->second, message, 1);
}

void TrayMenu::remove(const wire::Message& message) {
    const auto line = lines_.find(message.number(1).value_or(0));
    if (line == lines_.end())
        return;
    delete line->second;
    lines_.erase(line);
}

void TrayMenu::popup(const QRect& icon) {
    const QScreen* screen = QGuiApplication::screenAt(icon.center());
    const bool upperHalf = screen == nullptr || icon.center().y() < screen->geometry().center().y();
    const int height = menu_.sizeHint().height();
    menu_.popup(upperHalf ? icon.bottomLeft() + QPoint(0, 1) : icon.topLeft() - QPoint(0, height));
}

void TrayMenu::popupAtPointer() {
    if (!pointerIsFree() && ++tries_ < mostTries) {
        QTimer::singleShot(triesInterval, this, &TrayMenu::popupAtPointer);
        return;
    }
    tries_ = 0;
    menu_.popup(QCursor::pos());
}

TrayItem::TrayItem(Channel& channel) : channel_(channel) {
    connect(&channel_, &Channel::received, this, &TrayItem::obey);
    connect(&menu_, &TrayMenu::clicked, this, [this](int id) {
        channel_.send({tray::click, std::to_string(id)});
    });
    connect(&menu_, &TrayMenu::closed, this, [this] { channel_.send({tray::closed}); });
    connect(&tray_, &SystemTray::docked, this, [this] {
        if (icon_)
            icon_->embedded();
    });
    connect(&tray_, &SystemTray::inkChanged, this, [this] {
        if (icon_)
            icon_->setInk(tray_.ink());
    });
    connect(&tray_, &SystemTray::exposed, this, [this] {
        if (icon_)
            icon_->lookBehind();
    });
}

void TrayItem::obey(const wire::Message& message) {
    if (message.verb() == tray::data)
        setData(QString::fromStdString(message.field(1)));
    else if (message.verb() == tray::manager)
        enter(static_cast<xcb_window_t>(message.number(1).value_or(XCB_WINDOW_NONE)));
    else if (message.verb() == tray::title)
        setTitle(QString::fromStdString(message.field(1)));
    else if (message.verb() == tray::hint)
        setHint(QString::fromStdString(message.field(1)));
    else if (message.verb() == tray::popup)
        menu_.popupAtPointer();
    else if (message.verb() == tray::image)
        setImage(QString::fromStdString(message.field(1)));
    else if (message.verb() == tray::insert)
        menu_.insert(message);
    else if (message.verb() == tray::change)
        menu_.change(message);
    else if (message.verb() == tray::remove)
        menu_.remove(message);
    else
        channel_.send({tray::warning, "nothing is known of \"" + message.verb() + "\""});
}

void TrayItem::setData(const QString& folder) {
    data_ = folder;
    menu_.setSymbols(folder + QLatin1String("/symbols"));
}

void TrayItem::setImage(const QString& name) {
    picture_ = load(data_, name);
    if (picture_.isNull())
        channel_.send({tray::warning, "there is no picture \"" + name.toStdString() + "\""});
    if (icon_)
        icon_->setPicture(picture_);
}

void TrayItem::setTitle(const QString& title) {
    title_ = title;
    if (icon_)
        icon_->setTitle(title);
}

void TrayItem::setHint(const QString& hint) {
    hint_ = hint;
    if (icon_)
        icon_->setHint(hint);
}

/// Makes a window that fits the tray and asks it to take that in; a window of an earlier tray goes.
void TrayItem::enter(xcb_window_t manager) {
    icon_.reset();
    tray_.setManager(manager);
    if (!tray_.present())
        return;
    icon_ = std::make_unique<TrayIcon>(tray_.translucent());
    connect(icon_.get(), &TrayIcon::pressed, &menu_, &TrayMenu::popup);
    icon_->setPicture(picture_);
    icon_->setInk(tray_.ink());
    icon_->setTitle(title_);
    icon_->setHint(hint_);
    tray_.dock(icon_->window());
}

} // namespace kelpa
