#include "platform/linux/tray/older/TrayMenu.h"

#include <QGuiApplication>
#include <QScreen>

namespace kelpa {

TrayMenu::TrayMenu(QString symbols) : symbols_(std::move(symbols)) {}

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

} // namespace kelpa
