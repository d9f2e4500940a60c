#include "platform/linux/view/Surroundings.h"

#include <QLocale>
#include <QProcess>
#include <QProcessEnvironment>
#include <QRegularExpression>
#include <QUrl>

namespace kelpa::view {

namespace {

/// What stands between the hours and the minutes; without its blanks and quotes, because they have fields of
/// their own here.
QString separatorIn(const QString& format) {
    static const QRegularExpression between(QStringLiteral("[hH]([^hHm]+)m"));
    QString found = between.match(format).captured(1).remove(QLatin1Char('\'')).trimmed();
    return found.isEmpty() ? QStringLiteral(":") : found;
}

/// What this program was started with. What it sets for itself would reach the browser.
const QProcessEnvironment original = QProcessEnvironment::systemEnvironment();

bool isWebAddress(const QString& address) {
    const QUrl url(address, QUrl::StrictMode);
    return url.isValid() && (url.scheme() == QLatin1String("https") || url.scheme() == QLatin1String("http"));
}

} // namespace

ClockFormat::ClockFormat(QObject* parent) : QObject(parent) {
    const QLocale locale = QLocale::system();
    const QString format = locale.timeFormat(QLocale::ShortFormat);
    const qsizetype half = format.indexOf(QLatin1Char('a'), 0, Qt::CaseInsensitive);
    twelveHours_ = half >= 0;
    halfFirst_ = twelveHours_ && half < format.indexOf(QLatin1Char('m'));
    zeroBeforeHour_ = format.contains(QLatin1String("hh"), Qt::CaseInsensitive);
    separator_ = separatorIn(format);
    am_ = locale.amText();
    pm_ = locale.pmText();
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
