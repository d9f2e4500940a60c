#pragma once

#include "platform/linux/helper/Message.h"

#include <QMenu>
#include <map>

namespace kelpa {

/// The status item's menu, line by line as the program wants it, also while it is open.
class TrayMenu : public QObject {
    Q_OBJECT

  public:
    /// `symbols` is the folder of the lines' pictures.
    explicit TrayMenu(QString symbols);

    /// insert INDEX LINE…, change LINE…, remove ID; what refers to no line does nothing.
    void insert(const wire::Message& message);
    void change(const wire::Message& message);
    void remove(const wire::Message& message);
    /// Opens at a place of the desktop beside `icon`, on the side where there is room.
    void popup(const QRect& icon);

  signals:
    void clicked(int id);

  private:
    /// The fields of a line stand in a message from `first` on: ID SEPARATOR ENABLED TITLE IMAGE KEY.
    void fill(QAction& action, const wire::Message& message, std::size_t first);

    QString symbols_;
    QMenu menu_;
    std::map<int, QAction*> lines_;
};

} // namespace kelpa
