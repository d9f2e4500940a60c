#include "platform/linux/tray/older/TrayIcon.h"

#include "platform/linux/tray/older/SystemTray.h"

#include <QFontMetrics>
#include <QMouseEvent>
#include <QPainter>
#include <algorithm>

namespace kelpa {

namespace {

constexpr int usualHeight = 24;
constexpr int gap = 2;
constexpr int margin = 2;
/// On light and on dark ground alike, as the pictures of menus have it.
constexpr QColor seenAnywhere(0x33, 0x9b, 0x7e);

/// The text with every figure as wide as any other, so that the width changes only with the length.
QString widest(QString text) {
    for (QChar& character : text)
        if (character.isDigit())
            character = QLatin1Char('0');
    return text;
}

} // namespace

TrayIcon::TrayIcon() : QWidget(nullptr, Qt::Window | Qt::FramelessWindowHint | Qt::BypassWindowManagerHint) {
    setAttribute(Qt::WA_NoSystemBackground);
    setAttribute(Qt::WA_AlwaysShowToolTips);
    setWindowTitle(QStringLiteral("Kelpa"));
    setAccessibleName(QStringLiteral("Kelpa"));
}

void TrayIcon::setPicture(const QImage& mask) {
    picture_ = mask;
    update();
}

void TrayIcon::setTitle(const QString& title) {
    const bool sameLength = widest(title) == widest(title_);
    title_ = title;
    if (!sameLength)
        adapt();
    else if (titleFits())
        update(titleBox());
    describe();
}

void TrayIcon::setHint(const QString& hint) {
    hint_ = hint;
    describe();
}

/// The tooltip has no need to repeat a time that stands beside it.
void TrayIcon::describe() {
    const QString hint = hint_.isEmpty() ? QString() : QStringLiteral(" – ") + hint_;
    const QString untold = titleFits() || title_.isEmpty() ? QString() : QLatin1Char(' ') + title_;
    setToolTip(QStringLiteral("Kelpa") + untold + hint);
    setAccessibleDescription(title_ + hint);
}

QFont TrayIcon::titleFont() const {
    QFont font = this->font();
    font.setPixelSize(std::clamp(height() * 55 / 100, 9, 15));
    return font;
}

int TrayIcon::titleWidth() const {
    return title_.isEmpty() ? 0 : QFontMetrics(titleFont()).horizontalAdvance(widest(title_));
}

int TrayIcon::wantedWidth() const {
    return title_.isEmpty() ? height() : height() + gap + titleWidth() + margin;
}

bool TrayIcon::titleFits() const {
    return !title_.isEmpty() && width() >= wantedWidth();
}

QRect TrayIcon::titleBox() const {
    return {height() + gap, 0, width() - height() - gap, height()};
}

xcb_window_t TrayIcon::makeWindow(bool translucent) {
    translucent_ = translucent;
    setAttribute(Qt::WA_TranslucentBackground, translucent);
    resize(usualHeight, usualHeight);
    resize(wantedWidth(), height());
    const auto window = static_cast<xcb_window_t>(winId());
    adapt();
    return window;
}

void TrayIcon::dropWindow() {
    docked_ = false;
    behind_ = {};
    hide();
    destroy();
}

/// Asks the tray for as much room as picture and text need; what it grants comes as a change of the size.
void TrayIcon::adapt() {
    const QSize wanted(wantedWidth(), std::min(height(), usualHeight));
    if (internalWinId() != 0)
        askForRoom(static_cast<xcb_window_t>(internalWinId()), wanted * devicePixelRatio());
    update();
}

void TrayIcon::embedded() {
    if (internalWinId() == 0)
        return; // the tray went meanwhile
    docked_ = true;
    show();
    adapt(); // the toolkit has written its own wish
    lookBehind();
}

/// Where windows cannot be seen through, a picture of what is behind takes the place of it.
void TrayIcon::lookBehind() {
    if (translucent_ || !docked_)
        return;
    behind_ = x11::picture(static_cast<xcb_window_t>(winId()), size() * devicePixelRatio());
    behind_.setDevicePixelRatio(devicePixelRatio());
    update();
}

void TrayIcon::setInk(const QColor& ink) {
    ink_ = ink;
    update();
}

QColor TrayIcon::ink() const {
    if (translucent_)
        return ink_.isValid() ? ink_ : seenAnywhere;
    if (behind_.isNull())
        return palette().color(QPalette::WindowText);
    return behind_.pixelColor(behind_.rect().center()).lightness() > 140 ? QColor(0x20, 0x22, 0x25)
                                                                         : QColor(0xf2, 0xf2, 0xf2);
}

void TrayIcon::paintEvent(QPaintEvent* /*event*/) {
    QPainter painter(this);
    painter.setCompositionMode(QPainter::CompositionMode_Source);
    if (!behind_.isNull())
        painter.drawImage(0, 0, behind_);
    else
        painter.fillRect(rect(), translucent_ ? QColor(Qt::transparent) : palette().color(QPalette::Window));
    painter.setCompositionMode(QPainter::CompositionMode_SourceOver);

    // A bar may grant less than a picture needs, at first or for good.
    const int side = std::min(width(), height()) - 2 * margin;
    if (side > 0 && !picture_.isNull())
        painter.drawImage(titleFits() ? margin : (width() - side) / 2, (height() - side) / 2, tinted(side));

    if (!titleFits())
        return;
    painter.setFont(titleFont());
    painter.setPen(ink());
    painter.drawText(titleBox(), Qt::AlignVCenter | Qt::AlignLeft, title_);
}

/// The picture in our colour, in a square of that many of the toolkit's units.
QImage TrayIcon::tinted(int side) const {
    QImage picture =
        picture_.scaled(QSize(side, side) * devicePixelRatio(), Qt::KeepAspectRatio, Qt::SmoothTransformation)
            .convertToFormat(QImage::Format_ARGB32_Premultiplied);
    QPainter painter(&picture);
    painter.setCompositionMode(QPainter::CompositionMode_SourceIn);
    painter.fillRect(picture.rect(), ink());
    painter.end();
    picture.setDevicePixelRatio(devicePixelRatio());
    return picture;
}

void TrayIcon::resizeEvent(QResizeEvent* event) {
    QWidget::resizeEvent(event);
    adapt();
    describe();
    lookBehind();
}

void TrayIcon::mousePressEvent(QMouseEvent* event) {
    const QPoint corner = event->globalPosition().toPoint() - event->position().toPoint();
    emit pressed(QRect(corner, size()));
}

} // namespace kelpa
