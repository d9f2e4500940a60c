#pragma once

#include "platform/linux/tray/older/SystemTray.h"
#include "platform/linux/tray/older/TrayIcon.h"
#include "platform/linux/tray/older/TrayMenu.h"
#include "platform/linux/view/Channel.h"

#include <memory>

namespace kelpa {

/// The status item in the tray, as the program wants it.
class TrayItem : public QObject {
    Q_OBJECT

  public:
    /// `data` is the folder of the program's data. The channel outlives the item.
    TrayItem(Channel& channel, QString data);

  private:
    void obey(const wire::Message& message);
    void setImage(const QString& name);
    void setTitle(const QString& title);
    void enter();

    Channel& channel_;
    QString data_;
    TrayMenu menu_;
    SystemTray tray_;
    std::unique_ptr<TrayIcon> icon_; ///< null while there is no tray
    QImage picture_;
    QString title_;
};

} // namespace kelpa
