#include "platform/linux/update/fetch/PackageVersion.h"

#include <QProcess>

namespace kelpa {

namespace {

constexpr int patience = 10'000; // milliseconds

} // namespace

QString versionInside(const QString& package) {
    QProcess reader;
    reader.setStandardErrorFile(QProcess::nullDevice());
    reader.start(QStringLiteral("dpkg-deb"), {QStringLiteral("--field"), package, QStringLiteral("Version")});
    const bool ended = reader.waitForFinished(patience) && reader.exitStatus() == QProcess::NormalExit;
    if (!ended || reader.exitCode() != 0)
        return {};
    const QString version = QString::fromUtf8(reader.readAllStandardOutput()).trimmed();
    return version.mid(version.indexOf(QLatin1Char(':')) + 1);
}

} // namespace kelpa
