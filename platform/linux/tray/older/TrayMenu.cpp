#include "platform/linux/tray/older/TrayMenu.h"

#include "platform/linux/view/X11.h"

#include <QCursor>
#include <QGuiApplication>
#include <QPainter>
#include <QPalette>
#include <QScreen>
#include <chrono>

namespace kelpa {

namespace {

using namespace std::chrono_literals;
/// A person may keep the button down for as long as that, in all.
constexpr auto triesInterval = 20ms;
constexpr int mostTries = 50;
/// Who is asked for light or dark may have to be started, or stand still.
constexpr int triesForColours = 12;

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

/// What is seen well on it.
QColor inkOn(const QColor& background) {
    return view::isDark({background, {}, {}, {}}).value_or(false) ? Qt::white : QColor(0x1b, 0x1d, 0x20);
}

QColor between(const QColor& one, const QColor& other) {
    return QColor((one.red() + other.red()) / 2, (one.green() + other.green()) / 2,
                  (one.blue() + other.blue()) / 2);
}

/// The desktop's colours, and the windows' own where it names none.
view::ThemeColors completed(view::ThemeColors colors, bool dark) {
    if (!colors.background.isValid())
        colors = {dark ? QColor(0x27, 0x29, 0x2d) : QColor(0xfd, 0xfd, 0xfe), {}, {}, {}};
    if (!colors.text.isValid())
        colors.text = inkOn(colors.background);
    if (!colors.chosen.isValid())
        colors.chosen = dark ? QColor(0x1f, 0x6f, 0xe0) : QColor(0x00, 0x66, 0xde);
    if (!colors.chosenText.isValid())
        colors.chosenText = inkOn(colors.chosen);
    return colors;
}

QPalette paletteOf(const view::Appearance& appearance) {
    const view::ThemeColors colors = completed(appearance.colors(), appearance.dark());
    QPalette palette(colors.background, colors.background);
    for (const auto role : {QPalette::WindowText, QPalette::Text, QPalette::ButtonText}) {
        palette.setColor(role, colors.text);
        palette.setColor(QPalette::Disabled, role, between(colors.text, colors.background));
    }
    palette.setColor(QPalette::Base, colors.background);
    palette.setColor(QPalette::Highlight, colors.chosen);
    palette.setColor(QPalette::HighlightedText, colors.chosenText);
    return palette;
}

QPixmap inOneColor(QPixmap picture, const QColor& color) {
    if (picture.isNull())
        return picture;
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(picture.rect(), color);
    return picture;
}

} // namespace

TrayMenu::TrayMenu() {
    connect(&menu_, &QMenu::aboutToHide, this, &TrayMenu::closed, Qt::QueuedConnection);
    again_.setSingleShot(true);
    connect(&again_, &QTimer::timeout, this, &TrayMenu::openInTime);
}

void TrayMenu::fill(QAction& action, const wire::Message& message, std::size_t first) {
    const QString title = QString::fromStdString(message.field(first + 3));
    const QString image = QString::fromStdString(message.field(first + 4));
    const QString key = QString::fromStdString(message.field(first + 5));
    action.setSeparator(message.field(first + 1) == "1");
    action.setEnabled(message.field(first + 2) == "1");
    action.setText(QString(title).replace(QLatin1Char('&'), QLatin1String("&&")));
    action.setData(image.isEmpty() ? QString() : symbols_ + QLatin1Char('/') + image + QLatin1String(".png"));
    draw(action);
    action.setIconVisibleInMenu(true);
    action.setShortcut(key.isEmpty() ? QKeySequence() : QKeySequence(QLatin1String("Ctrl+") + key.toUpper()));
    action.setShortcutVisibleInContextMenu(true);
}

void TrayMenu::draw(QAction& action) const {
    const QPixmap picture(action.data().toString());
    QIcon icon(picture);
    icon.addPixmap(inOneColor(picture, menu_.palette().color(QPalette::HighlightedText)), QIcon::Active);
    action.setIcon(picture.isNull() ? QIcon() : icon);
}

void TrayMenu::insert(const wire::Message& message) {
    const auto id = message.number(2);
    if (!id || lines_.contains(*id))
        return;
    auto* action = new QAction(&menu_);
    fill(*action, message, 2);
    connect(action, &QAction::triggered, this, [this, line = *id] { emit clicked(line); });
    menu_.insertAction(menu_.actions().value(message.number(1).value_or(-1)), action);
    lines_.insert(*id, action);
}

void TrayMenu::change(const wire::Message& message) {
    if (QAction* const line = lines_.value(message.number(1).value_or(0)))
        fill(*line, message, 1);
}

void TrayMenu::remove(const wire::Message& message) {
    delete lines_.take(message.number(1).value_or(0));
}

void TrayMenu::popup(const QRect& icon) {
    icon_ = icon;
    openInTime();
}

void TrayMenu::popupAtPointer() {
    icon_.reset();
    openInTime();
}

void TrayMenu::openInTime() {
    if (!appearance_)
        appearance_.emplace();
    if (early()) {
        ++tries_;
        again_.start(triesInterval);
        return;
    }
    again_.stop();
    tries_ = 0;
    menu_.setPalette(paletteOf(*appearance_));
    for (QAction* const line : std::as_const(lines_))
        draw(*line);
    menu_.popup(place());
}

/// A menu that changes its colours after it came is worse than one that comes a little later.
bool TrayMenu::early() const {
    return (tries_ < triesForColours && !appearance_->settled()) ||
           (tries_ < mostTries && !icon_ && !pointerIsFree());
}

QPoint TrayMenu::place() const {
    if (!icon_)
        return QCursor::pos();
    const QScreen* screen = QGuiApplication::screenAt(icon_->center());
    const bool upperHalf = screen == nullptr || icon_->center().y() < screen->geometry().center().y();
    return upperHalf ? icon_->bottomLeft() + QPoint(0, 1)
                     : icon_->topLeft() - QPoint(0, menu_.sizeHint().height());
}

} // namespace kelpa
