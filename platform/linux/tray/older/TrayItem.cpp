#include "platform/linux/tray/older/TrayItem.h"

#include "platform/linux/helper/TrayProtocol.h"

#include <QFile>
#include <QtEndian>

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

} // namespace

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
