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
    /// The channel outlives the item.
    explicit TrayItem(Channel& channel);

  private:
    void obey(const wire::Message& message);
    void setData(const QString& folder);
    void setImage(const QString& name);
    void setTitle(const QString& title);
    void setHint(const QString& hint);
    void enter(xcb_window_t manager);

    Channel& channel_;
    QString data_; ///< the folder of the program's data
    TrayMenu menu_;
    SystemTray tray_;
    std::unique_ptr<TrayIcon> icon_; ///< null while there is no tray
    QImage picture_;
    QString title_;
    QString hint_;
};

} // namespace kelpa
