#include "platform/linux/helper/Connection.h"
#include "platform/linux/helper/UpdateProtocol.h"
#include "platform/linux/update/fetch/UpdateTask.h"
#include "platform/linux/view/Channel.h"

#include <QCoreApplication>
#include <QNetworkProxyFactory>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <cstdio>
#include <exception>
#include <fstream>
#include <string>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <unistd.h>

namespace {

namespace wire = kelpa::wire;

constexpr rlim_t mostMore = 128 * 1024 * 1024;

int connection = -1;
/// Written when there is no memory left to write it with.
std::string lastWords;

[[noreturn]] void sayAndEnd() {
    ::send(connection, lastWords.data(), lastWords.size(), MSG_NOSIGNAL | MSG_DONTWAIT);
    ::_exit(EXIT_FAILURE);
}

/// Bytes of the process's own writable memory, however little of it is in use.
rlim_t ownMemory() {
    std::ifstream file("/proc/self/statm");
    rlim_t pages = 0;
    for (int field = 0; field < 6; ++field)
        file >> pages;
    return pages * static_cast<rlim_t>(sysconf(_SC_PAGESIZE));
}

/// A server that sends headers without end would otherwise fill the machine's memory, because the toolkit
/// keeps them all. From here on the process may take some more memory and not beyond: then it says so on
/// `channel`, in the protocol's words, and ends.
void boundMemory(int channel) {
    connection = channel;
    wire::encode({wire::update::failed, wire::update::tooLarge, "it takes too much memory"}, lastWords);
    std::set_terminate(sayAndEnd);
    const rlim_t most = ownMemory() + mostMore;
    const rlimit bound{most, most};
    setrlimit(RLIMIT_DATA, &bound);
}

/// Trusts the certificate authorities in the file that `SSL_CERT_FILE` names, and no others, as most programs
/// that speak TLS do; the toolkit itself only knows the system's. Without the variable nothing changes.
void useCertificatesOfEnvironment() {
    const QString file = qEnvironmentVariable("SSL_CERT_FILE");
    if (file.isEmpty())
        return;
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setCaCertificates(QSslCertificate::fromPath(file));
    QSslConfiguration::setDefaultConfiguration(configuration);
}

} // namespace

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
    useCertificatesOfEnvironment();
    boundMemory(kelpa::Channel::descriptor);
    kelpa::Channel channel;
    const kelpa::UpdateTask task(channel);
    return QCoreApplication::exec();
}
