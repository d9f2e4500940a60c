#include "platform/linux/view/Appearance.h"

#include "platform/linux/view/XSettings.h"

#include <QDBusConnection>
#include <QDBusMessage>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPalette>
#include <QTimer>

namespace kelpa::view {

namespace {

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString schemeKey = QStringLiteral("color-scheme");

enum class Scheme : unsigned { None = 0, Dark = 1, Light = 2 };

/// What the desktop's theme says where there is no portal.
bool themeIsDark() {
    const QByteArray theme = xSetting("Net/ThemeName");
    if (!theme.isEmpty())
        return theme.toLower().contains("dark");
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
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
    dark_ = themeIsDark();
    // After what is to be shown at once.
    QTimer::singleShot(0, this, &Appearance::askPortal);
}

void Appearance::askPortal() {
    if (!sessionBusExists())
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
    const bool stated =
        scheme == static_cast<unsigned>(Scheme::Dark) || scheme == static_cast<unsigned>(Scheme::Light);
    const bool dark = stated ? scheme == static_cast<unsigned>(Scheme::Dark) : themeIsDark();
    if (dark == dark_)
        return;
    dark_ = dark;
    emit darkChanged();
}

} // namespace kelpa::view
