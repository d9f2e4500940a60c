#pragma once

#include "platform/linux/helper/Connection.h"
#include "platform/linux/view/Appearance.h"

#include <QMap>
#include <QMenu>
#include <QTimer>
#include <optional>

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
    void openInTime();
    [[nodiscard]] bool early() const;
    [[nodiscard]] QPoint place() const;
    /// The fields of a line stand in a message from `first` on: ID SEPARATOR ENABLED TITLE IMAGE KEY.
    void fill(QAction& action, const wire::Message& message, std::size_t first);
    /// Gives it its picture, which has the colour of the words while the line is chosen.
    void draw(QAction& action) const;

    QString symbols_;
    QMenu menu_;
    QMap<int, QAction*> lines_;
    std::optional<QRect> icon_;                  ///< where the menu is opened at; nothing for the pointer
    std::optional<view::Appearance> appearance_; ///< asked for with the first opening
    QTimer again_;                               ///< until the menu can be opened
    int tries_ = 0;
};

} // namespace kelpa
