#pragma once

namespace kelpa {

/// Trusts the certificate authorities in the file that `SSL_CERT_FILE` names, and no others, as most programs
/// that speak TLS do; the toolkit itself only knows the system's. Without the variable nothing changes.
void useCertificatesOfEnvironment();

} // namespace kelpa
