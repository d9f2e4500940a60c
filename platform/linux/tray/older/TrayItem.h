#pragma once

#include "platform/linux/tray/older/SystemTray.h"
#include "platform/linux/tray/older/TrayIcon.h"
#include "platform/linux/view/Channel.h"

#include <QMenu>
#include <map>
#include <memory>

namespace kelpa {

/// The status item's menu, line by line as the program wants it, also while it is open.
class TrayMenu : public QObject {
    Q_OBJECT

  public:
    TrayMenu();

    /// `symbols` is the folder of the lines' pictures; before any line is inserted.
    void setSymbols(const QString& symbols) { symbols_ = symbols; }
    /// insert INDEX LINE…, change LINE…, remove ID; what refers to no line does nothing.
    void insert(const wire::Message& message);
    void change(const wire::Message& message);
    void remove(const wire::Message& message);
    /// Opens at a place of the desktop beside `icon`, on the side where there is room.
    void popup(const QRect& icon);
    /// Opens at the pointer, once nobody holds that for a click elsewhere.
    void popupAtPointer();

  signals:
    void clicked(int id);
    /// After the click, if there was one.
    void closed();

  private:
    /// The fields of a line stand in a message from `first` on: ID SEPARATOR ENABLED TITLE IMAGE KEY.
    void fill(QAction& action, const wire::Message& message, std::size_t first);

    QString symbols_;
    int tries_ = 0; ///< of opening while somebody holds the pointer
    QMenu menu_;
    std::map<int, QAction*> lines_;
};

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
