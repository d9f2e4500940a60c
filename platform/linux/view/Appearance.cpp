#include "platform/linux/view/Appearance.h"

#include "platform/linux/view/X11.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPalette>
#include <QStandardPaths>
#include <QTimer>

namespace kelpa::view {

namespace {

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString schemeKey = QStringLiteral("color-scheme");

enum class Scheme : unsigned { None = 0, Dark = 1, Light = 2 };

/// What LXQt gives its programs; nothing on other desktops.
ThemeColors lxqtColors() {
    if (!qgetenv("XDG_CURRENT_DESKTOP").split(':').contains("LXQt"))
        return {};
    return colorsOfPalette(
        QStandardPaths::locate(QStandardPaths::GenericConfigLocation, QStringLiteral("lxqt/lxqt.conf")));
}

ThemeColors toolkitColors() {
    const QPalette palette = QGuiApplication::palette();
    return {palette.color(QPalette::Window), palette.color(QPalette::WindowText),
            palette.color(QPalette::Highlight), palette.color(QPalette::HighlightedText)};
}

/// A person may have chosen other colours than the theme has.
ThemeColors chosenColors() {
    const ThemeColors lxqt = lxqtColors();
    return lxqt.background.isValid() ? lxqt : colorsOfScheme(x11::setting("Gtk/ColorScheme"));
}

/// What the desktop draws its programs with, and whether that is dark.
struct Look {
    ThemeColors colors;
    bool dark;
};

Look currentLook() {
    ThemeColors colors = chosenColors();
    const QString theme = QString::fromUtf8(x11::setting("Net/ThemeName"));
    if (!colors.background.isValid())
        colors = theme.isEmpty() ? toolkitColors() : colorsOfTheme(theme, themeFolders());
    return {colors, isDark(colors).value_or(isDarkName(theme))};
}

/// Without a bus of the session, asking for it could start one.
bool sessionBusExists() {
    return qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") ||
           QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
}

} // namespace

Appearance::Appearance(QObject* parent) : QObject(parent) {
    const QByteArray wanted = qgetenv("KELPA_APPEARANCE");
    if (wanted == "light" || wanted == "dark") {
        dark_ = wanted == "dark";
        return;
    }
    dark_ = currentLook().dark;
    settled_ = false;
    settings_ = std::make_unique<x11::SettingsWatch>([this] { decide(); });
    // After what is to be shown at once.
    QTimer::singleShot(0, this, &Appearance::askPortal);
}

Appearance::~Appearance() = default;

ThemeColors Appearance::colors() const {
    const Look look = currentLook();
    return look.dark == dark_ ? look.colors : ThemeColors();
}

void Appearance::askPortal() {
    settled_ = !sessionBusExists();
    if (settled_)
        return;
    QDBusConnection bus = QDBusConnection::sessionBus();
    bus.connect(portalService, portalPath, settingsInterface, QStringLiteral("SettingChanged"), this,
                SLOT(settingChanged(QDBusMessage)));
    QDBusMessage question =
        QDBusMessage::createMethodCall(portalService, portalPath, settingsInterface, QStringLiteral("Read"));
    question << appearanceGroup << schemeKey;
    auto* call = new QDBusPendingCallWatcher(bus.asyncCall(question), this);
    connect(call, &QDBusPendingCallWatcher::finished, this, &Appearance::portalAnswered);
}

void Appearance::portalAnswered(QDBusPendingCallWatcher* call) {
    call->deleteLater();
    settled_ = true;
    const QDBusPendingReply<QDBusVariant> reply = *call;
    if (reply.isError())
        return;
    setScheme(reply.value().variant());
}

void Appearance::settingChanged(const QDBusMessage& signal) {
    const QVariantList values = signal.arguments();
    if (values.size() == 3 && values[0] == appearanceGroup && values[1] == schemeKey)
        setScheme(values[2]);
}

void Appearance::setScheme(QVariant scheme) {
    // The portal wraps what it is asked for once more than what it tells by itself.
    while (scheme.canConvert<QDBusVariant>())
        scheme = scheme.value<QDBusVariant>().variant();
    stated_.reset();
    if (scheme == static_cast<unsigned>(Scheme::Dark) || scheme == static_cast<unsigned>(Scheme::Light))
        stated_ = scheme == static_cast<unsigned>(Scheme::Dark);
    decide();
}

void Appearance::decide() {
    const bool dark = stated_ ? *stated_ : currentLook().dark;
    if (dark == dark_)
        return;
    dark_ = dark;
    emit darkChanged();
}

} // namespace kelpa::view
