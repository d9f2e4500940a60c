#include "platform/linux/update/fetch/Certificates.h"
#include "platform/linux/update/fetch/MemoryBound.h"
#include "platform/linux/update/fetch/UpdateTask.h"
#include "platform/linux/view/Channel.h"

#include <QCoreApplication>
#include <QNetworkProxyFactory>
#include <cstdio>
#include <sys/stat.h>

int main(int argc, char** argv) {
    if (!kelpa::Channel::isConnection()) {
        std::fputs("kelpa-update looks for new versions of kelpa, which starts it when it is needed.\n",
                   stderr);
        return 2;
    }
    // What is downloaded is for this user alone.
    umask(S_IRWXG | S_IRWXO);
    qputenv("QT_NO_GLIB", "1");
    const QCoreApplication application(argc, argv);
    QCoreApplication::setApplicationName(QStringLiteral("Kelpa"));
    QNetworkProxyFactory::setUseSystemConfiguration(true);
    kelpa::useCertificatesOfEnvironment();
    kelpa::boundMemory(kelpa::Channel::descriptor);
    kelpa::Channel channel;
    const kelpa::UpdateTask task(channel);
    return QCoreApplication::exec();
}
