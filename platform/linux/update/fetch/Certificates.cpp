#include "platform/linux/update/fetch/Certificates.h"

#include <QSslCertificate>
#include <QSslConfiguration>

namespace kelpa {

void useCertificatesOfEnvironment() {
    const QString file = qEnvironmentVariable("SSL_CERT_FILE");
    if (file.isEmpty())
        return;
    QSslConfiguration configuration = QSslConfiguration::defaultConfiguration();
    configuration.setCaCertificates(QSslCertificate::fromPath(file));
    QSslConfiguration::setDefaultConfiguration(configuration);
}

} // namespace kelpa
