#include "platform/linux/view/Browser.h"

#include <QProcess>
#include <QUrl>

namespace kelpa::view {

namespace {

QProcessEnvironment original;

bool isWebAddress(const QString& address) {
    const QUrl url(address, QUrl::StrictMode);
    return url.isValid() && (url.scheme() == QLatin1String("https") || url.scheme() == QLatin1String("http"));
}

} // namespace

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
