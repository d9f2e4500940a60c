#include "platform/linux/view/Surroundings.h"

#include "platform/linux/view/ThemeColors.h"
#include "platform/linux/view/X11.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QDBusVariant>
#include <QFileInfo>
#include <QGuiApplication>
#include <QPalette>
#include <QProcess>
#include <QRegularExpression>
#include <QTimer>
#include <QUrl>

namespace kelpa::view {

namespace {

const QString portalService = QStringLiteral("org.freedesktop.portal.Desktop");
const QString portalPath = QStringLiteral("/org/freedesktop/portal/desktop");
const QString settingsInterface = QStringLiteral("org.freedesktop.portal.Settings");
const QString appearanceGroup = QStringLiteral("org.freedesktop.appearance");
const QString schemeKey = QStringLiteral("color-scheme");

enum class Scheme : unsigned { None = 0, Dark = 1, Light = 2 };

/// What the desktop's theme says where there is no portal. A person may have chosen other colours for it.
bool themeIsDark() {
    if (const auto chosen = isDarkScheme(x11::setting("Gtk/ColorScheme")))
        return *chosen;
    const QByteArray theme = x11::setting("Net/ThemeName");
    if (!theme.isEmpty())
        return isDarkTheme(QString::fromUtf8(theme), themeFolders());
    const QPalette palette = QGuiApplication::palette();
    return palette.color(QPalette::Window).lightness() < palette.color(QPalette::WindowText).lightness();
}

/// Without a bus of the session, asking for it could start one.
bool sessionBusExists() {
    return qEnvironmentVariableIsSet("DBUS_SESSION_BUS_ADDRESS") ||
           QFileInfo::exists(qEnvironmentVariable("XDG_RUNTIME_DIR") + QStringLiteral("/bus"));
}

/// What stands between the hours and the minutes; without its blanks and quotes, because they have fields of
/// their own here.
QString separatorIn(const QString& format) {
    static const QRegularExpression between(QStringLiteral("[hH]([^hHm]+)m"));
    QString found = between.match(format).captured(1).remove(QLatin1Char('\'')).trimmed();
    return found.isEmpty() ? QStringLiteral(":") : found;
}

QProcessEnvironment original;

bool isWebAddress(const QString& address) {
    const QUrl url(address, QUrl::StrictMode);
    return url.isValid() && (url.scheme() == QLatin1String("https") || url.scheme() == QLatin1String("http"));
}

} // namespace

Appearance::Appearance(QObject* parent) : QObject(parent) {
    const QByteArray wanted = qgetenv("KELPA_APPEARANCE");
    if (wanted == "light" || wanted == "dark") {
        dark_ = wanted == "dark";
        return;
    }
    dark_ = themeIsDark();
    settings_ = std::make_unique<x11::SettingsWatch>([this] { decide(); });
    // After what is to be shown at once.
    QTimer::singleShot(0, this, &Appearance::askPortal);
}

Appearance::~Appearance() = default;

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
    stated_.reset();
    if (scheme == static_cast<unsigned>(Scheme::Dark) || scheme == static_cast<unsigned>(Scheme::Light))
        stated_ = scheme == static_cast<unsigned>(Scheme::Dark);
    decide();
}

void Appearance::decide() {
    const bool dark = stated_ ? *stated_ : themeIsDark();
    if (dark == dark_)
        return;
    dark_ = dark;
    emit darkChanged();
}

ClockFormat::ClockFormat(const QLocale& locale, QObject* parent) : QObject(parent) {
    const QString format = locale.timeFormat(QLocale::ShortFormat);
    const qsizetype half = format.indexOf(QLatin1Char('a'), 0, Qt::CaseInsensitive);
    twelveHours_ = half >= 0;
    halfFirst_ = twelveHours_ && half < format.indexOf(QLatin1Char('m'));
    zeroBeforeHour_ = format.contains(QLatin1String("hh"), Qt::CaseInsensitive);
    separator_ = separatorIn(format);
    am_ = locale.amText();
    pm_ = locale.pmText();
}

void Browser::setEnvironment(const QProcessEnvironment& environment) {
    original = environment;
}

void Browser::open(const QString& address) {
    if (!isWebAddress(address))
        return;
    QProcess opener;
    opener.setProgram(QStringLiteral("xdg-open"));
    opener.setArguments({address});
    opener.setProcessEnvironment(original);
    if (!opener.startDetached())
        qWarning("xdg-open cannot be started to show %s.", qPrintable(address));
}

} // namespace kelpa::view
