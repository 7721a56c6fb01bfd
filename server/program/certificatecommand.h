#pragma once

#include <QString>

namespace frserver {

/// Makes in that folder an authority (frspf-ca.pem, frspf-ca.key) unless it is there, and a certificate for
/// the host with its key (server.pem, server.key), by openssl; says what clients have to do. Gives the exit
/// status; what is there is never written over. Throws std::runtime_error.
int makeCertificate(const QString& host, const QString& folder);

} // namespace frserver
