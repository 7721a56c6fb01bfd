#pragma once

#include <QByteArray>

#include <vector>

#include <gnutls/abstract.h>

namespace http {

/// A certificate with those that vouch for it, and its key, as GnuTLS has them.
struct TlsMaterial
{
    /// Throws std::runtime_error with GnuTLS's words.
    TlsMaterial(const QByteArray& certificates, const QByteArray& key);
    ~TlsMaterial();
    TlsMaterial(const TlsMaterial&) = delete;
    TlsMaterial& operator=(const TlsMaterial&) = delete;

    gnutls_certificate_credentials_t credentials = nullptr;
    /// The server's own first.
    gnutls_x509_crt_t* certificates = nullptr;
    unsigned count = 0;
    /// What a client is sent.
    std::vector<gnutls_pcert_st> sent;
    gnutls_privkey_t key = nullptr;

private:
    void load(const QByteArray& pem, const QByteArray& keyPem);
    void release();
};

} // namespace http
