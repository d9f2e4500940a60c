#include "platform/linux/tray/older/TrayItem.h"

#include "platform/linux/helper/TrayProtocol.h"
#include "platform/linux/tray/older/SystemTray.h"
#include "platform/linux/tray/older/TrayIcon.h"
#include "platform/linux/tray/older/TrayMenu.h"

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

class TrayItem final : public QObject {
  public:
    explicit TrayItem(Channel& channel) : channel_(channel) {
        connect(&channel_, &Channel::received, this, &TrayItem::obey);
        connect(&menu_, &TrayMenu::clicked, this, [this](int id) {
            channel_.send({tray::click, std::to_string(id)});
        });
        connect(&menu_, &TrayMenu::closed, this, [this] { channel_.send({tray::closed}); });
        connect(&tray_, &SystemTray::docked, &icon_, &TrayIcon::embedded);
        connect(&tray_, &SystemTray::inkChanged, this, [this] { icon_.setInk(tray_.ink()); });
        connect(&tray_, &SystemTray::exposed, &icon_, &TrayIcon::lookBehind);
        connect(&icon_, &TrayIcon::pressed, &menu_, &TrayMenu::popup);
    }

  private:
    void obey(const wire::Message& message) {
        const QString text = QString::fromStdString(message.field(1));
        if (message.verb() == tray::data)
            setData(text);
        else if (message.verb() == tray::manager)
            enter(static_cast<xcb_window_t>(message.number(1).value_or(XCB_WINDOW_NONE)));
        else if (message.verb() == tray::title)
            icon_.setTitle(text);
        else if (message.verb() == tray::hint)
            icon_.setHint(text);
        else if (message.verb() == tray::popup)
            menu_.popupAtPointer();
        else if (message.verb() == tray::image)
            setImage(text);
        else if (message.verb() == tray::insert)
            menu_.insert(message);
        else if (message.verb() == tray::change)
            menu_.change(message);
        else if (message.verb() == tray::remove)
            menu_.remove(message);
        else
            channel_.send({tray::warning, "nothing is known of \"" + message.verb() + "\""});
    }

    void setData(const QString& folder) {
        data_ = folder;
        menu_.setSymbols(folder + QLatin1String("/symbols"));
    }

    void setImage(const QString& name) {
        const QImage picture = load(data_, name);
        if (picture.isNull())
            channel_.send({tray::warning, "there is no picture \"" + name.toStdString() + "\""});
        icon_.setPicture(picture);
    }

    /// Makes a window that fits the tray and asks it to take that in; a window of an earlier tray goes.
    void enter(xcb_window_t manager) {
        icon_.dropWindow();
        tray_.setManager(manager);
        if (!tray_.present())
            return;
        icon_.setInk(tray_.ink());
        tray_.dock(icon_.makeWindow(tray_.translucent()));
    }

    Channel& channel_;
    QString data_; ///< the folder of the program's data
    TrayMenu menu_;
    SystemTray tray_;
    TrayIcon icon_;
};

} // namespace

std::unique_ptr<QObject> makeTrayItem(Channel& channel) {
    return std::make_unique<TrayItem>(channel);
}

} // namespace kelpa
